// Markers for tests, put together without the program's own writer.
#pragma once

#include <string>
#include <vector>

namespace morva::testing_blocks {

inline std::u16string Digits(int value) {
  std::u16string text;
  if (value < 0) return u"-" + Digits(-value);
  do {
    text.insert(text.begin(), static_cast<char16_t>(u'0' + value % 10));
    value /= 10;
  } while (value > 0);
  return text;
}

inline std::u16string HexLine(const std::vector<unsigned char>& bytes, std::size_t from,
                              std::size_t count) {
  std::u16string text = u"(MORVA DATA ";
  for (std::size_t i = from; i < from + count && i < bytes.size(); ++i) {
    for (const int half : {bytes[i] / 16, bytes[i] % 16}) {
      text += static_cast<char16_t>(half < 10 ? u'0' + half : u'A' + half - 10);
    }
  }
  return text + u")\r\n";
}

// A record of 160 bytes and 48 for each item, zero but for the four numbers.
inline std::vector<unsigned char> RecordBytes(int version, int kind, int a, int items) {
  std::vector<unsigned char> bytes(static_cast<std::size_t>(160 + 48 * items), 0);
  bytes[0] = static_cast<unsigned char>(version);
  bytes[4] = static_cast<unsigned char>(kind);
  bytes[12] = static_cast<unsigned char>(a);
  bytes[24] = static_cast<unsigned char>(items);
  return bytes;
}

inline std::u16string DataLines(const std::vector<unsigned char>& bytes) {
  std::u16string text;
  for (std::size_t at = 0; at < bytes.size(); at += 24) text += HexLine(bytes, at, 24);
  return text;
}

// A whole settings block of kind 4 without items; no line end in front or behind.
inline std::u16string SketchBlock(int id, const std::u16string& code,
                                  const std::u16string& name = u"") {
  std::u16string text = u"(MORVA BEGIN " + Digits(id) + u")\r\n";
  if (!name.empty()) text += u"(MORVA NAME " + name + u")\r\n";
  return text + DataLines(RecordBytes(3, 4, 0, 0)) + u"(MORVA CODE)\r\n" + code +
         u"\r\n(MORVA END " + Digits(id) + u")";
}

inline std::u16string UserBlock(int id, const std::u16string& code,
                                const std::u16string& name = u"User code") {
  return u"(MORVA TEXT " + Digits(id) + u")\r\n(MORVA NAME " + name + u")\r\n" + code +
         u"\r\n(MORVA END " + Digits(id) + u")";
}

}  // namespace morva::testing_blocks
