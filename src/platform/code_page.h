// Code pages: 8-bit text of scripts, text files, tables and serial lines to UTF-16 and back.
// Room: platform. Used by: values (text), data (tables), io (text files, serial lines), the runner.
// May touch: the system's character conversion (iconv) for pages other than the built-in ones.
// Must not touch: the process locale, files.
// Invariant: decoding never fails and loses no byte; in a single-byte page every byte is one character and comes
// back as the same byte.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace brindle {

class CodePage {
public:
  CodePage(const CodePage&) = delete;
  CodePage& operator=(const CodePage&) = delete;

  // The page of scripts and text files, one for the process; UTF-8 until it is set.
  static const CodePage& Ansi() noexcept;

  // False, and nothing changes, when no page has that name. References handed out earlier stay valid.
  [[nodiscard]] static bool SetAnsi(std::string_view name);

  // The page of serial lines and tables, where a byte must be a character: Ansi() when that is a single-byte
  // page, else windows-1252.
  static const CodePage& Bytes() noexcept;

  static const CodePage& Utf8() noexcept;
  static const CodePage& Windows1252() noexcept;

  // Null when no page has that name or the system brings no conversion for it. Letter case does not count; a
  // number alone ("1251", "cp1251") is a page number. UTF-8, windows-1252 and ISO-8859-1 are always there.
  // Encodings in 16- or 32-bit units are not code pages.
  [[nodiscard]] static std::shared_ptr<const CodePage> Find(std::string_view name);

  // Whether bytes below 0x80 are always the characters of those codes; false where it is not known.
  [[nodiscard]] bool IsAsciiBased() const noexcept { return m_bAsciiBased; }
  // Writes a text that is all ASCII to `bytes`, a byte for a unit. False for any other text, and when it is not
  // known how ASCII is written: then what stands there means nothing.
  [[nodiscard]] bool EncodeAscii(std::u16string_view text, char* bytes) const noexcept;
  // Whether each of the bytes is certain to be the character of its code.
  [[nodiscard]] bool AreAscii(std::string_view bytes) const noexcept;
  [[nodiscard]] bool IsSingleByte() const noexcept { return m_bSingleByte; }
  [[nodiscard]] const std::string& Name() const noexcept { return m_strName; }

  // A byte that is no part of a character is read as its windows-1252 character. DecodeTo appends.
  [[nodiscard]] std::u16string Decode(std::string_view bytes) const;
  virtual void DecodeTo(std::string_view bytes, std::u16string& text) const = 0;

  // A character that the page lacks becomes "?"; in UTF-8 a lone surrogate becomes U+FFFD.
  [[nodiscard]] std::string Encode(std::u16string_view text) const;

  // Replaces `bytes` by as many whole characters of `text` as fit into `maxBytes` and returns the number of
  // 16-bit units taken.
  std::size_t EncodedPrefix(std::u16string_view text, std::size_t maxBytes, std::string& bytes) const;

  // How many bytes at the end start a character that is not complete yet: a reader that works in portions
  // keeps them for the next one. Always 0 in a single-byte page. (Shift states do not carry over portions.)
  [[nodiscard]] virtual std::size_t IncompleteTail(std::string_view bytes) const = 0;

  // How many bytes the first `units` units of Decode(bytes) were read from; a character of two units counts
  // as read once its first unit is.
  [[nodiscard]] virtual std::size_t BytesOfUnits(std::string_view bytes, std::size_t units) const = 0;

  virtual ~CodePage();

protected:
  CodePage(std::string_view name, bool singleByte, bool asciiBased = false)
      : m_strName(name), m_bSingleByte(singleByte), m_bAsciiBased(asciiBased) {}
  void NoteNotAsciiBased() noexcept { m_bAsciiBased = false; }

  // Appends whole characters while the appended bytes stay within `maxBytes`; returns the units taken.
  virtual std::size_t EncodeTo(std::u16string_view text, std::size_t maxBytes, std::string& bytes) const = 0;

private:
  std::string m_strName;
  bool m_bSingleByte;
  bool m_bAsciiBased;
};

} // namespace brindle
