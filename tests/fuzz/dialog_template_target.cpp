// The reader of dialog templates: whatever it takes is written and read back the same.
#include "fuzz_support.h"

#include "ui/dialog_template.h"

using namespace brindle;
using fuzz::Require;

namespace {

bool IsSame(const DialogRectangle& left, const DialogRectangle& right) {
  return left.x == right.x && left.y == right.y && left.width == right.width && left.height == right.height;
}

bool IsSame(const DialogHeader& left, const DialogHeader& right) {
  return left.style == right.style && left.itemCount == right.itemCount && IsSame(left.rectangle, right.rectangle) &&
         left.title == right.title && left.hasFont == right.hasFont && left.pointSize == right.pointSize &&
         left.face == right.face;
}

bool IsSame(const DialogItem& left, const DialogItem& right) {
  return left.style == right.style && IsSame(left.rectangle, right.rectangle) && left.id == right.id &&
         left.windowClass == right.windowClass && left.className == right.className && left.caption == right.caption &&
         KindOf(left) == KindOf(right);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto read = ReadDialogTemplate(std::as_bytes(std::span(data, size)));
  if (!read)
    return 0;
  std::vector<std::byte> bytes = MakeDialogHeader(read->header);
  for (const DialogItem& item : read->items)
    AppendItem(bytes, MakeDialogItem(item));
  Require(ItemCountOf(bytes) == read->header.itemCount, "every item is counted");
  Require(bytes.size() <= size + 3, "what is written is no longer than what was read");
  const auto again = ReadDialogTemplate(bytes);
  Require(again.has_value(), "what is written can be read");
  Require(IsSame(read->header, again->header), "a header comes back");
  Require(read->items.size() == again->items.size(), "every item comes back");
  for (std::size_t i = 0; i < read->items.size(); ++i)
    Require(IsSame(read->items[i], again->items[i]), "an item comes back");
  return 0;
}
