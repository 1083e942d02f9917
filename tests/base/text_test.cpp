#include "base/text.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "base/folded_text.h"
#include "base/number_text.h"
#include "base/printable.h"
#include "base/text_encoding.h"

namespace vaxel {
namespace {

using namespace std::string_literals;

TEST(Text, UpperCaseKeepsItsLength) {
  EXPECT_EQ(UpperCase("Début œuvre ÿ ÷ µ ωμς журнал ё \xFF"), "DÉBUT ŒUVRE Ÿ ÷ µ ΩΜΣ ЖУРНАЛ Ё \xFF");
  EXPECT_TRUE(EqualIgnoringCase("Été", "éTÉ"));
  EXPECT_EQ(DropLastCharacter("45°"), "45");
  EXPECT_EQ(DropLastCharacter(""), "");
  EXPECT_EQ(Shorten("aé", 2), "a…");
}

// Both ends of the letters that have a plain form, and a sign between them that has none.
TEST(Text, FoldsAccentsAndJoinedLetters) {
  EXPECT_EQ(FoldedText("Círculo Àÿ œuvre Straße Þ × à"), "CIRCULO AŸ OEUVRE STRASSE Þ × A");
}

TEST(Printable, WritesOutWhatATerminalWouldObey) {
  EXPECT_EQ(Printable("é漢 😀\\x"), "é漢 😀\\x");
  EXPECT_EQ(Printable("\x1B[2J\x7F\0\n\t"s), "\\x1b[2J\\x7f\\x00\\x0a\\x09");
  EXPECT_EQ(Printable("a\n\tb\r", LineBreaks::Kept), "a\n\tb\\x0d");
  // C1 in UTF-8, and a byte of its own, which a terminal of another encoding would take for the same.
  EXPECT_EQ(Printable("\u009B\u0080\u009F\u00A0\x9B\xC3"), "\\x9b\\x80\\x9f\u00A0\\x9b\\xc3");
  EXPECT_EQ(Printable("\u200E\u200F\u202A\u202E\u2066\u2069\uFFFD"),
            "\\u200e\\u200f\\u202a\\u202e\\u2066\\u2069\uFFFD");
  EXPECT_EQ(Printable("\u200D\u2029\u202F\u2065\u206A"), "\u200D\u2029\u202F\u2065\u206A");
}

TEST(Text, NumbersAreRead) {
  EXPECT_EQ(LeadingNumber("  -2.5mm"), -2.5);
  EXPECT_EQ(LeadingNumber("mm"), 0);
  EXPECT_TRUE(IsNumber(" -2.5 "));
  for (const char* text : {"", "Rouge", "5R", "1,5", "-"}) EXPECT_FALSE(IsNumber(text)) << text;
}

TEST(NumberText, IsTheShortestThatReadsBack) {
  EXPECT_EQ(NumberText(0.1), "0.1");
  EXPECT_EQ(NumberText(10), "10");
  EXPECT_EQ(NumberText(-0.0), "0");
  EXPECT_EQ(NumberText(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(NumberText(0.1 + 0.2), "0.3");
  EXPECT_EQ(NumberText(1e20), "1E+20");
  EXPECT_EQ(NumberText(-1.5e-7), "-1.5E-07");
  EXPECT_EQ(FixedText(-0.001, 2), "0.00");
  EXPECT_EQ(FixedText(2.345678, 2), "2.35");
}

// As if it were written with 15 digits and read again: by the C library here.
TEST(NumberText, RoundsAsWritingAndReadingDoes) {
  std::mt19937_64 random(1);
  for (int exponent = -9; exponent <= 17; ++exponent) {
    for (int i = 0; i < 200; ++i) {
      const double value =
          std::ldexp(static_cast<double>(random()), -64) * std::pow(10, exponent) * (i % 2 == 0 ? 1 : -1);
      std::array<char, 40> text{};
      std::snprintf(text.data(), text.size(), "%.15g", value);
      EXPECT_EQ(AsWritten(value), std::strtod(text.data(), nullptr)) << text.data();
    }
  }
}

TEST(TextEncoding, IsToldByTheBytes) {
  struct Case {
    std::string Bytes;
    std::string Text;
    TextEncoding Encoding;
  };
  const Case cases[] = {
      {"µ°\n", "µ°\n", TextEncoding::Utf8},
      {"\xEF\xBB\xBFx", "x", TextEncoding::Utf8WithMark},
      {"45\xB0 \x80\xA7", "45° €§", TextEncoding::Windows1252},
      // A surrogate, an overlong form and a sequence that is cut short are no UTF-8.
      {"\xED\xA0\x80", "í\u00A0€", TextEncoding::Windows1252},
      {"\xC0\x80", "À€", TextEncoding::Windows1252},
      {"a\xE2\x82", "aâ‚", TextEncoding::Windows1252},
      {"\xFF\xFE"s + "A\0\xA9\x03\x3D\xD8\x00\xDE\x00\xD8x\0"s, "AΩ😀\uFFFDx",
       TextEncoding::Utf16LittleEndian},
      {"\xFE\xFF"s + "\0A\x03\xA9"s, "AΩ", TextEncoding::Utf16BigEndian},
      // The characters around the surrogates, the last pair, and halves that make none.
      {"\xFE\xFF\xD7\xFF\xE0\0\xDB\xFF\xDF\xFF"s, "\uD7FF\uE000\U0010FFFF", TextEncoding::Utf16BigEndian},
      {"\xFE\xFF\xD8\0\xE0\0\xDC\0\xDC\0\xD8\0\xDB\xFF\xD8\0"s, "\uFFFD\uE000\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD",
       TextEncoding::Utf16BigEndian}};
  for (const Case& c : cases) {
    const auto decoded = DecodeText(c.Bytes);
    ASSERT_TRUE(decoded) << c.Text;
    EXPECT_EQ(decoded->Text, c.Text);
    EXPECT_EQ(decoded->Encoding, c.Encoding) << c.Text;
  }
  EXPECT_FALSE(DecodeText("\x7F"s + "ELF\0\0"s));
}

TEST(TextEncoding, WrittenTextIsReadBack) {
  struct Case {
    std::string Text;
    TextEncoding Wanted;
    std::string Bytes;  // empty: UTF-8 with a mark
  };
  const Case cases[] = {{"45° €ž\r\n", TextEncoding::Windows1252, "45\xB0 \x80\x9E\r\n"},
                        {"\0\u0081ÿ"s, TextEncoding::Windows1252, "\0\x81\xFF"s},
                        {"Ω", TextEncoding::Windows1252, ""},
                        {"\u0080", TextEncoding::Windows1252, ""},
                        {"Ã©", TextEncoding::Windows1252, ""},  // as bytes it would read as "é"
                        {"ÿþx", TextEncoding::Windows1252, ""},
                        {"\uFEFFx", TextEncoding::Utf8, ""},
                        {"µΩ", TextEncoding::Utf8, "µΩ"},
                        {"AΩ😀", TextEncoding::Utf16LittleEndian,
                         "\xFF\xFE"
                         "A\0\xA9\x03\x3D\xD8\0\xDE"s},
                        {"😀A", TextEncoding::Utf16BigEndian, "\xFE\xFF\xD8\x3D\xDE\0\0A"s}};
  for (const Case& c : cases) {
    const EncodedText encoded = EncodeText(c.Text, c.Wanted);
    EXPECT_EQ(encoded.Bytes, c.Bytes.empty() ? "\xEF\xBB\xBF" + c.Text : c.Bytes) << c.Text;
    EXPECT_EQ(encoded.Encoding, c.Bytes.empty() ? TextEncoding::Utf8WithMark : c.Wanted) << c.Text;
    EXPECT_EQ(DecodeAnyText(encoded.Bytes).Text, c.Text);
  }
}

}  // namespace
}  // namespace vaxel
