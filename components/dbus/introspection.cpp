#include "introspection.h"

#include <algorithm>
#include <array>

namespace brindle {

namespace {

struct Tag {
  std::string_view name;
  std::string_view attributes;
  bool closing = false; // "</name>"
  bool empty = false;   // "<name/>"
};

constexpr std::string_view kBlanks = " \t\r\n";

// The next element of the text; comments, declarations and everything between tags are passed over.
bool NextTag(std::string_view& text, Tag& tag) {
  for (;;) {
    const std::size_t open = text.find('<');
    if (open == std::string_view::npos)
      return false;
    text.remove_prefix(open + 1);
    const bool comment = text.starts_with("!--");
    // A ">" inside an attribute's quotes does not end the tag.
    std::size_t end = 0;
    if (comment) {
      end = text.find("-->");
      end = end == std::string_view::npos ? end : end + 2;
    } else {
      char quote = 0;
      while (end < text.size() && (quote != 0 || text[end] != '>')) {
        if (quote == 0 && (text[end] == '"' || text[end] == '\''))
          quote = text[end];
        else if (text[end] == quote)
          quote = 0;
        ++end;
      }
    }
    if (end >= text.size())
      return false;
    std::string_view inside = text.substr(0, end);
    text.remove_prefix(end + 1);
    if (comment || inside.empty() || inside[0] == '!' || inside[0] == '?')
      continue;
    tag = Tag();
    tag.closing = inside[0] == '/';
    if (tag.closing)
      inside.remove_prefix(1);
    tag.empty = !inside.empty() && inside.back() == '/';
    if (tag.empty)
      inside.remove_suffix(1);
    const std::size_t nameEnd = std::min(inside.find_first_of(kBlanks), inside.size());
    tag.name = inside.substr(0, nameEnd);
    tag.attributes = inside.substr(nameEnd);
    return true;
  }
}

std::string Decoded(std::string_view text) {
  struct Entity {
    std::string_view name;
    char character;
  };
  static constexpr std::array kEntities = {Entity{"&amp;", '&'}, Entity{"&lt;", '<'}, Entity{"&gt;", '>'},
                                           Entity{"&quot;", '"'}, Entity{"&apos;", '\''}};
  std::string decoded;
  while (!text.empty()) {
    const auto* const entity = std::find_if(kEntities.begin(), kEntities.end(),
                                            [&](const Entity& known) { return text.starts_with(known.name); });
    decoded += entity != kEntities.end() ? entity->character : text[0];
    text.remove_prefix(entity != kEntities.end() ? entity->name.size() : 1);
  }
  return decoded;
}

std::string Attribute(const Tag& tag, std::string_view name) {
  std::string_view rest = tag.attributes;
  for (;;) {
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
    const std::size_t equals = rest.find('=');
    const std::size_t open = rest.find_first_of("\"'");
    if (equals == std::string_view::npos || open == std::string_view::npos)
      return {};
    const std::size_t close = rest.find(rest[open], open + 1);
    if (close == std::string_view::npos)
      return {};
    std::string_view found = rest.substr(0, equals);
    found = found.substr(0, found.find_last_not_of(kBlanks) + 1);
    if (found == name)
      return Decoded(rest.substr(open + 1, close - open - 1));
    rest.remove_prefix(close + 1);
  }
}

bool IsEverywhere(const BusMember& member) {
  return member.interface == "org.freedesktop.DBus.Properties" ||
         member.interface == "org.freedesktop.DBus.Introspectable" || member.interface == "org.freedesktop.DBus.Peer";
}

} // namespace

std::vector<BusMember> ReadIntrospection(std::string_view xml, const std::string& interface) {
  std::vector<BusMember> members;
  int nodes = 0;
  std::string current; // the interface that the next members belong to
  bool inMethod = false;
  for (Tag tag; NextTag(xml, tag);) {
    if (tag.name == "node") {
      nodes += tag.closing ? -1 : tag.empty ? 0 : 1;
    } else if (nodes != 1) {
      continue;
    } else if (tag.name == "interface") {
      current = tag.closing || tag.empty ? std::string() : Attribute(tag, "name");
      inMethod = false;
    } else if (current.empty() || (!interface.empty() && current != interface)) {
      continue;
    } else if (tag.name == "method") {
      inMethod = !tag.closing && !tag.empty;
      if (!tag.closing)
        members.push_back({current, Attribute(tag, "name"), false, {}, {}});
    } else if (tag.name == "property") {
      if (!tag.closing)
        members.push_back({current, Attribute(tag, "name"), true, {}, Attribute(tag, "type")});
    } else if (tag.name == "arg" && inMethod && !tag.closing) {
      if (Attribute(tag, "direction") == "out")
        members.back().out += Attribute(tag, "type");
      else
        members.back().in.push_back(Attribute(tag, "type"));
    } else if (tag.name == "signal") {
      inMethod = false;
    }
  }
  std::stable_partition(members.begin(), members.end(), [](const BusMember& member) { return !IsEverywhere(member); });
  return members;
}

} // namespace brindle
