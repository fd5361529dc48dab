#include "util/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "support/GermanLocale.h"

namespace orv::util {
namespace {

TEST(NumberText, BringsEveryDoubleBackBitForBitInAnyLocale) {
  const tests::GermanLocale german;
  std::uint64_t bits = 1;
  for (int i = 0; i < 20000; ++i) {
    bits = bits * 6364136223846793005u + 1442695040888963407u;
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    for (const std::string& text : {shortText(value), exactText(value)}) {
      double back = 0;
      ASSERT_TRUE(parseNumber(text, back));
      ASSERT_EQ(0, std::memcmp(&value, &back, sizeof value)) << text;
    }
  }
  EXPECT_EQ("0.1", shortText(0.1));
  EXPECT_EQ("0.10000000000000001", exactText(0.1));
  EXPECT_EQ("-0", shortText(-0.0));
  EXPECT_EQ("5e-324", shortText(std::numeric_limits<double>::denorm_min()));
}

TEST(NumberText, CountsInTheSingularWhereThereIsOne) {
  EXPECT_EQ(counted(1, "row") + counted(0, "row") + counted(2, "more row"),
            "1 row0 rows2 more rows");
  EXPECT_EQ(counted(1, "mesh is", "meshes are") + counted(3, "mesh is", "meshes are"),
            "1 mesh is3 meshes are");
}

TEST(NumberText, ParsesWholeTextsOnly) {
  double d = 7;
  for (const char* bad : {"", " 1", "1 ", "1,5", "1.5x", "+-1", "++1", "+", "0x10", "1e", "1e999",
                          "nan", "inf", "-infinity"}) {
    EXPECT_FALSE(parseNumber(bad, d)) << bad;
  }
  EXPECT_EQ(7, d);
  EXPECT_TRUE(parseNumber("+.5", d));
  EXPECT_EQ(0.5, d);
  EXPECT_TRUE(parseNumber("-inf", d, NonFinite::kAccept));
  EXPECT_EQ(-std::numeric_limits<double>::infinity(), d);
  EXPECT_TRUE(parseNumber(shortText(std::nan("")), d, NonFinite::kAccept));
  EXPECT_TRUE(std::isnan(d));

  int i = 7;
  for (const char* bad : {"", "1.0", "2147483648", "1e3", "- 1", "nan"}) {
    EXPECT_FALSE(parseNumber(bad, i)) << bad;
  }
  EXPECT_EQ(7, i);
  EXPECT_TRUE(parseNumber("-2147483648", i));
  EXPECT_EQ(std::numeric_limits<int>::min(), i);
  std::int64_t wide = 0;
  EXPECT_TRUE(parseNumber("9223372036854775807", wide));
  EXPECT_EQ(std::numeric_limits<std::int64_t>::max(), wide);
}

}  // namespace
}  // namespace orv::util
