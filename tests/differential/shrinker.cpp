// Making a program that shows a difference small.
#include "comparison.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kMostTries = 4000;

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::string part;
  for (const char c : text) {
    part += c;
    if (c == separator)
      parts.push_back(std::exchange(part, {}));
  }
  if (!part.empty())
    parts.push_back(part);
  return parts;
}

std::string Join(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts)
    text += part;
  return text;
}

class Shrinker {
public:
  Shrinker(Trial trial, const std::string& folder)
      : m_trial(std::move(trial)), m_folder(folder), m_wanted(CompareApart(m_trial, folder, false)) {}

  Trial Result() {
    Trial alone = m_trial;
    alone.second.clear();
    Accept(std::move(alone));
    for (std::size_t before = 0; before != Size();) {
      before = Size();
      LeaveOut(&Trial::program, '\n');
      LeaveOut(&Trial::second, '\n');
      LeaveOut(&Trial::program, ' ');
      for (const RouteChoice& route : std::vector(m_trial.routes)) {
        Trial single = m_trial;
        single.routes = {route};
        if (m_trial.routes.size() > 1)
          Accept(std::move(single));
      }
    }
    return m_trial;
  }

private:
  [[nodiscard]] std::size_t Size() const {
    return m_trial.program.size() + m_trial.second.size() + m_trial.routes.size();
  }
  bool Accept(Trial candidate) {
    if (++m_tries > kMostTries || CompareApart(candidate, m_folder, false) != m_wanted)
      return false;
    m_trial = std::move(candidate);
    return true;
  }
  // Halves first, then smaller and smaller runs of parts.
  void LeaveOut(std::string Trial::*text, char separator) {
    for (std::size_t run = std::max<std::size_t>(1, Split(m_trial.*text, separator).size() / 2); run > 0; run /= 2) {
      for (std::size_t at = 0;;) {
        std::vector<std::string> parts = Split(m_trial.*text, separator);
        if (at >= parts.size())
          break;
        const auto first = parts.begin() + static_cast<std::ptrdiff_t>(at);
        parts.erase(first, first + static_cast<std::ptrdiff_t>(std::min(run, parts.size() - at)));
        Trial candidate = m_trial;
        candidate.*text = Join(parts);
        if (!Accept(std::move(candidate)))
          at += run;
      }
    }
  }

  Trial m_trial;
  const std::string& m_folder;
  Verdict m_wanted;
  int m_tries = 0;
};

} // namespace

Trial Shrink(Trial trial, const std::string& folder) {
  return Shrinker(std::move(trial), folder).Result();
}
