#include "scale/value_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace vaxel {
namespace {

std::string Text(float value, const char* format, const char* unit = "") {
  const auto read = ReadValueFormat(format);
  return read ? ValueText(value, *read, unit) : "malformed";
}

TEST(ValueText, PrefixesChangeAtPowersOfTenInSinglePrecision) {
  struct Case {
    float Value;
    const char* Expected;
  };
  // A value one step below a power of ten keeps the smaller prefix; as a double, 0.001F lies above 1/1000.
  for (const Case& c : {Case{1500, "1.5k"},
                        {0.002F, "2m"},
                        {0, "0"},
                        {-1500, "-1500"},
                        {1, "1"},
                        {999.9999F, "999.9999"},
                        {1000, "1k"},
                        {std::nextafter(1e6F, 0.0F), "999.99994k"},
                        {1e6F, "1M"},
                        {2.2e9F, "2.2G"},
                        {4.7e12F, "4.7T"},
                        {1e15F, "1P"},
                        {3e18F, "3E"},
                        {0.001F, "1m"},
                        {std::nextafter(0.001F, 0.0F), "999.9999µ"},
                        {4.7e-6F, "4.7µ"},
                        {33e-9F, "33n"},
                        {47e-12F, "47p"},
                        {1e-15F, "1f"},
                        {1e-18F, "1a"},
                        {5e-19F, "5E-19"}}) {
    EXPECT_EQ(Text(c.Value, "P"), c.Expected) << c.Value;
  }
  EXPECT_EQ(Text(1500, " p ", "Hz"), "1.5kHz");
  EXPECT_EQ(Text(1500, "P", " Hz"), "1.5 kHz");
  EXPECT_EQ(Text(15, "P", " Hz"), "15 Hz");
}

TEST(ValueText, ScientificForms) {
  EXPECT_EQ(Text(1500, "e"), "1.5E3");
  EXPECT_EQ(Text(0.002F, "E", " V"), "2E-3 V");
  EXPECT_EQ(Text(1500, "S"), "1.5×10³");
  EXPECT_EQ(Text(1e-12F, "S"), "10⁻¹²");
  EXPECT_EQ(Text(1, "S"), "10⁰");
  EXPECT_EQ(Text(1500, ""), "1500");
  EXPECT_EQ(Text(1500, "x"), "1500");
}

TEST(ValueText, PatternsRoundAndPad) {
  EXPECT_EQ(Text(1500, "0.00E+00"), "1.50E+03");
  EXPECT_EQ(Text(1500, "0.##e0"), "1.5E3");
  EXPECT_EQ(Text(0.00123F, "0.0E-0"), "1.2E-3");
  EXPECT_EQ(Text(12345, "00.0#E+000"), "12.35E+003");
  EXPECT_EQ(Text(9.996F, "0.00E+00"), "1.00E+01");
  EXPECT_EQ(Text(99.95F, "0.#E0"), "1E2");
  EXPECT_EQ(Text(-1, "#E0"), "-1E0");
  for (const char* pattern : {"0.0.0E0", "E0", ".0E0", "0E", "0Ex", "1.5E0", "0E+", "0E00000", "0.0 E0"}) {
    EXPECT_EQ(Text(1, pattern), "malformed") << pattern;
  }
}

TEST(ValueText, DecimalPatternsRoundGroupAndSign) {
  struct Case {
    const char* Pattern;
    float Value;
    const char* Expected;
  };
  const Case cases[] = {{"0.0", 2, "2.0"},
                        {"0.0", 0.25F, "0.3"},
                        {"0.0", -0.04F, "0.0"},
                        {"0.0", 99.96F, "100.0"},
                        {"0,00", 1.005F, "1,01"},
                        {"0.##", 2.5F, "2.5"},
                        {"0.0#", 3, "3.0"},
                        {"0.##", 3, "3"},
                        {"#.0", 0.5F, ".5"},
                        {"#", 0, "0"},
                        {"00", 7, "07"},
                        {"00", -7, "-07"},
                        {"0", 1e20F, "100000000000000000000"},
                        {"0.000", 1e-5F, "0.000"},
                        {"+0", 3, "+3"},
                        {"+0", 0, "0"},
                        {"+0", -3, "-3"},
                        {"+−0", -3, "−3"},
                        {"−0.0", 3, "3.0"},
                        {"# ##0", 1234567, "1\u202F234\u202F567"},
                        {"# ##0", 999.5F, "1\u202F000"},
                        {"# ##0,0", -12345.5F, "-12\u202F345,5"},
                        {"# ##0", 12, "12"},
                        {"0 000", 12, "0\u202F012"}};
  for (const Case& c : cases) {
    const auto format = ReadDecimalFormat(c.Pattern);
    ASSERT_TRUE(format) << c.Pattern;
    EXPECT_EQ(ValueText(c.Value, *format, ""), c.Expected) << c.Pattern << " " << c.Value;
  }
  EXPECT_EQ(ValueText(5, *ReadDecimalFormat("0.0"), " V"), "5.0 V");
  for (const char* malformed :
       {"", "0.0.0", "0#", "0.#0", "a", "0E0", "0 . 0", "--0", "+", "0.0000000000000000"}) {
    EXPECT_FALSE(ReadDecimalFormat(malformed)) << malformed;
  }
}

}  // namespace
}  // namespace vaxel
