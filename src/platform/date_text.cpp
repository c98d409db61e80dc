#include "platform/date_text.h"

#include <chrono>

namespace brindle {

bool IsDateText(std::u16string_view text) noexcept {
  constexpr std::u16string_view kForm = u"dddd-dd-dd dd:dd:dd";
  if (text.size() != kForm.size())
    return false;
  for (std::size_t i = 0; i < kForm.size(); ++i)
    if (kForm[i] == u'd' ? text[i] < u'0' || text[i] > u'9' : text[i] != kForm[i])
      return false;
  const auto part = [text](std::size_t at, std::size_t length) {
    unsigned value = 0;
    for (const char16_t digit : text.substr(at, length))
      value = value * 10 + static_cast<unsigned>(digit - u'0');
    return value;
  };
  const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(part(0, 4))),
                                         std::chrono::month(part(5, 2)), std::chrono::day(part(8, 2)));
  return date.ok() && part(11, 2) < 24 && part(14, 2) < 60 && part(17, 2) < 60;
}

} // namespace brindle
