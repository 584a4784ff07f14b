#include "values/text.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <tuple>

#include "support/scoped_separator.hpp"
#include "values/numbers.hpp"

namespace quintara::test {
namespace {

TEST(DefaultText, HasSevenDigitsAndNoExponent) {
  const std::pair<float, const char*> kCases[] = {
      {0, "0"},           {-0.0F, "0"},      {-0.25F, "-0,25"},      {12345.678F, "12345,68"},
      {1e7F, "10000000"}, {1e-4F, "0,0001"}, {99999.997F, "100000"}, {1.234e-5F, "0,00001234"}};
  const ScopedSeparator comma(",");
  for (const auto& [value, text] : kCases) EXPECT_EQ(defaultText(value), text);
  EXPECT_EQ(defaultText(1e20F), "100000002004087734272");
}

TEST(DefaultText, OfExtremePricesNeverReadsBackLarger) {
  for (float value = 1e-38F; value < 1e38F; value *= 1.37F) {
    if (value >= 1e-4F && value < 1e7F) continue;
    const std::string text = defaultText(value);
    EXPECT_EQ(text.find_first_not_of("0123456789."), std::string::npos) << text;
    EXPECT_EQ(text.starts_with("0."), value < 1) << text;
    EXPECT_LE(toSingle(readLeadingNumber(text)), value) << text;
    EXPECT_NEAR(readLeadingNumber(text) / value, 1, 2e-6) << text;
  }
}

TEST(DefaultText, OfOrdinaryPricesIsTheGeneralForm) {
  for (float value = 1e-4F; value < 9e6F; value *= 1.0173F) {
    char text[32];
    std::snprintf(text, sizeof text, "%.7g", static_cast<double>(value));
    EXPECT_EQ(defaultText(value), text);
    EXPECT_EQ(defaultText(-value), '-' + std::string(text));
  }
}

TEST(GridLabels, AreTwoDecimalsOrThePrintForm) {
  const std::pair<float, const char*> kCases[] = {{5.25F, "5.25"},    {0.125F, "0.13"},
                                                  {-0.125F, "-0.13"}, {-0.001F, "0.00"},
                                                  {-0.01F, "-0.01"},  {0, "0.00"}};
  for (const auto& [value, text] : kCases) EXPECT_EQ(twoDecimals(value), text);
  EXPECT_EQ(printForm(21) + printForm(0) + printForm(-123456), " 21  0 -123456 ");
}

TEST(LeadingNumber, IsReadAsFarAsItGoes) {
  const std::pair<const char*, double> kCases[] = {
      {"", 0},      {"12.5", 12.5}, {"12,5", 12},      {"1,234.50", 1}, {"4 2.5x", 42.5},
      {"word", 0},  {"1e2", 100},   {"1D2", 100},      {"1e", 1},       {"1e+", 1},
      {"-5", -5},   {"- 5", -5},    {"+ .5", 0.5},     {".", 0},        {"1.2.3", 1.2},
      {"&H1F", 31}, {"&o17", 15},   {"&H", 0},         {"inf", 0},      {"nan", 0},
      {"0x10", 0},  {"N/A", 0},     {"\t1\n2\r3", 12}, {"1e-999", 0},   {"1d-2", 0.01},
      {"+-5", 0},   {"--5", 0},     {"&hfG1", 15},     {"&O181", 1},    {"&1", 0},
  };
  const ScopedSeparator comma(",");  // which it must not follow
  for (const auto& [text, value] : kCases) EXPECT_EQ(readLeadingNumber(text), value) << text;
  const std::string zeros(400, '0');
  for (const std::string& large :
       {std::string("1e999"), std::string("-1e+999"), std::string("1e+99999999999999999999"),
        "1" + zeros + "e-5", "." + zeros + "1e+999", "&HF" + zeros})
    EXPECT_THROW(readLeadingNumber(large), RuntimeError) << large;
  for (const char* exponent : {"", "e+9", "e-9", "e-99999999999999999999"})
    EXPECT_EQ(readLeadingNumber("." + zeros + "1" + exponent), 0) << exponent;
}

TEST(LocaleNumber, FollowsTheUsersSeparatorAndNothingElse) {
  const std::tuple<const char*, const char*, double> kCases[] = {
      {".", "12.5", 12.5}, {".", " 12.5\r\n", 12.5}, {".", "-.5", -0.5}, {".", "5.", 5},
      {".", "1e3", 1000},  {",", "12,5", 12.5},      {"", "12.5", 12.5}, {"'", "12'5", 12.5},
  };
  for (const auto& [separator, text, value] : kCases) {
    const ScopedSeparator scoped(separator);
    EXPECT_EQ(readLocaleNumber(text), value) << separator << text;
  }
  EXPECT_EQ(readLocaleNumber(std::string_view("12.55").substr(0, 4)), 12.5) << "nothing behind it";
  const ScopedSeparator comma(",");
  for (const char* text :
       {"12.5", "1.234,5", "1,2,3", "", " ", "N/A", "inf", "nan", "0x1p3", "1 2", "-", "1e", "+,"})
    EXPECT_THROW(readLocaleNumber(text), RuntimeError) << text;
}

TEST(Numbers, AreRoundedHalfToEvenAndChecked) {
  for (const auto& [value, rounded] :
       {std::pair{232.5, 232}, {233.5, 234}, {-0.5, 0}, {32767.4, 32767}, {-32768.5, -32768}})
    EXPECT_EQ(toInt16(value), rounded);
  for (const double outside : {32767.5, -32769.0}) EXPECT_THROW(toInt16(outside), RuntimeError);
  EXPECT_EQ(roundTo3(0.0625), 0.062) << "an exact half";
  const float kMost = std::numeric_limits<float>::max();
  EXPECT_THROW(toSingle(1e39), RuntimeError);
  EXPECT_THROW(Single(kMost) + kMost, RuntimeError);
  EXPECT_THROW(Single(1) / 0, RuntimeError);
}

}  // namespace
}  // namespace quintara::test
