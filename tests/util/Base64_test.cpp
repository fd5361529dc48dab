#include "util/xml/Base64.h"

#include <gtest/gtest.h>

namespace orv::util::xml {
namespace {

std::string decoded(std::string_view text) {
  const std::vector<unsigned char> bytes = decodeBase64(text);
  return {bytes.begin(), bytes.end()};
}

TEST(Base64, MatchesKnownTextsAndBringsEveryByteBack) {
  // The vectors of RFC 4648.
  const std::string texts[] = {"", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy"};
  for (std::size_t size = 0; size <= 6; ++size) {
    EXPECT_EQ(texts[size], encodeBase64("foobar", size));
    EXPECT_EQ(std::string("foobar", size), decoded(texts[size]));
  }
  std::vector<unsigned char> bytes;
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(bytes, decodeBase64(encodeBase64(bytes.data(), bytes.size())));
    bytes.push_back(static_cast<unsigned char>(i * 37 + i / 256));
  }
}

TEST(Base64, ReadsABlobWholeOrNotAtAll) {
  for (const char* bad :
       {"Zm9vYmF*", "Zm9vYmF", "Zm9v\n", " m9v", "Zg=v", "Z===", "====", "=m9v"}) {
    std::vector<unsigned char> bytes = {1};
    EXPECT_FALSE(decodeBase64(bad, bytes)) << bad;
    EXPECT_TRUE(bytes.empty()) << bad;
  }
  // Any byte outside the alphabet, at any place of any group.
  const std::string good = "Zm9vYmFy";
  const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (std::size_t place = 0; place < good.size(); ++place) {
    for (int c = 0; c < 256; ++c) {
      std::string text = good;
      text[place] = static_cast<char>(c);
      const bool fine =
          alphabet.find(text[place]) != std::string::npos || (c == '=' && place % 4 == 3);
      EXPECT_EQ(fine, !decodeBase64(text).empty()) << text;
    }
  }
  std::vector<unsigned char> none;
  EXPECT_TRUE(decodeBase64("", none));
  EXPECT_EQ("ffoo", decoded("Zg==Zm9v")) << "each group stands on its own";
}

}  // namespace
}  // namespace orv::util::xml
