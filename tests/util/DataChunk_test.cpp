#include "util/DataChunk.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace orv::util {
namespace {

using Bytes = std::vector<unsigned char>;

DataChunk exampleRig() {
  DataChunk rig("Rig");
  rig.addValue("i", std::int32_t(-2));
  rig.payload = {0xAA, 0xBB};
  DataChunk history("");
  history.addText("t", "x");
  rig.addChunk(history);
  return rig;
}

const Bytes kExampleBytes = {2, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 'R', 'i',  'g',  0xAA, 0xBB,  //
                             4, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 'i', 0xFE, 0xFF, 0xFF, 0xFF,
                             0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0,  //
                             1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 't', 'x'};

Bytes header(std::int32_t size, std::int32_t children, std::int32_t nameLength) {
  Bytes bytes;
  for (const std::int32_t n : {size, children, nameLength})
    for (int shift = 0; shift < 32; shift += 8)
      bytes.push_back(static_cast<unsigned char>(static_cast<std::uint32_t>(n) >> shift));
  return bytes;
}

TEST(DataChunk, FlattensToTheWireFormAndReadsItBack) {
  EXPECT_EQ(kExampleBytes, exampleRig().flatten());
  Bytes more = kExampleBytes;
  more.push_back(7);
  DataChunk trusted, checked;
  EXPECT_EQ(&more.back(), trusted.read(more.data()));
  EXPECT_EQ(&more.back(), checked.read(more.data(), more.size()));
  EXPECT_EQ(exampleRig(), trusted);
  EXPECT_EQ(exampleRig(), checked);
  EXPECT_EQ(exampleRig(), DataChunk(kExampleBytes.data()));
  checked.read(kExampleBytes.data(), kExampleBytes.size());
  ASSERT_EQ(4u, checked.children.size()) << "what is read comes behind the children";
  EXPECT_EQ(checked.children[1], checked.children[3]);
}

TEST(DataChunk, RefusesBadHeadersAndWhatIsCutOffAndStaysAsItWas) {
  for (std::size_t size = 0; size < kExampleBytes.size(); ++size) {
    const Bytes cut(kExampleBytes.begin(), kExampleBytes.begin() + std::ptrdiff_t(size));
    DataChunk chunk = exampleRig();
    EXPECT_EQ(nullptr, chunk.read(cut.data(), cut.size())) << size;
    EXPECT_EQ(exampleRig(), chunk) << size;
  }
  DataChunk chunk;
  EXPECT_EQ(nullptr, chunk.read(nullptr));
  EXPECT_EQ(nullptr, chunk.read(nullptr, 100));
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  for (const Bytes& bad : {header(-1, 0, 0), header(0, -1, 0), header(0, 0, 257),
                           header(kMax, 0, 0), header(0, kMax, 0), header(0, 0, kMax)}) {
    Bytes roomy = header(0, 1, 0);  // as a child it spoils the whole
    roomy.insert(roomy.end(), bad.begin(), bad.end());
    roomy.resize(600);
    EXPECT_EQ(nullptr, chunk.read(roomy.data(), roomy.size()));
    EXPECT_EQ(nullptr, chunk.read(roomy.data() + 12, roomy.size() - 12));
  }

  Bytes negative = header(1, 0, -7);
  negative.push_back('p');
  EXPECT_EQ(negative.data() + negative.size(), chunk.read(negative.data(), negative.size()));
  EXPECT_EQ("", chunk.name) << "a negative length is no name";
  EXPECT_EQ(Bytes{'p'}, chunk.payload);
}

TEST(DataChunk, TakesNamesTo256BytesAndBoundedDepth) {
  const Bytes longest = DataChunk(std::string(256, 'n')).flatten();
  EXPECT_EQ(std::string(256, 'n'), DataChunk(longest.data(), longest.size()).name);
  EXPECT_TRUE(DataChunk(std::string(257, 'n')).flatten().empty()) << "could not be read again";

  DataChunk deep;
  for (int i = 0; i < DataChunk::kMaxDepth; ++i) {
    DataChunk outer;
    outer.addChunk(std::move(deep));
    deep = std::move(outer);
  }
  Bytes bytes = deep.flatten();
  EXPECT_EQ(deep, DataChunk(bytes.data(), bytes.size()));
  Bytes deeper = header(0, 1, 0);
  deeper.insert(deeper.end(), bytes.begin(), bytes.end());
  EXPECT_EQ(nullptr, deep.read(deeper.data(), deeper.size()));
  DataChunk tooDeep;
  tooDeep.addChunk(deep);
  EXPECT_TRUE(tooDeep.flatten().empty());
}

TEST(DataChunk, LooksKeysUpByExactNameFirstMatchFirst) {
  DataChunk rig = exampleRig();
  rig.addValue("i", std::int32_t(5));
  rig.addValue("d", 0.1);
  std::int32_t i = 0;
  double d = 3;
  EXPECT_TRUE(rig.getValue("i", i));
  EXPECT_EQ(-2, i);
  EXPECT_FALSE(rig.getValue("I", i));
  EXPECT_FALSE(rig.getValue("i", d)) << "another size is another type";
  EXPECT_EQ(3, d);
  EXPECT_TRUE(rig.getValue("d", d));
  EXPECT_EQ(0.1, d);
  EXPECT_FALSE(rig.getChunk("absent").hasChunk("i"));
  EXPECT_EQ(&rig.getChunk("absent"), &rig.getChunk("other")) << "one shared empty chunk";
  std::string text = "old";
  EXPECT_TRUE(rig.getChunk("").getText("t", text));
  EXPECT_EQ("x", text);
  EXPECT_FALSE(rig.getText("t", text));
  rig.addChunk(rig);
  EXPECT_EQ(4u, rig.children.back().children.size()) << "a copy of itself as it was before";
}

}  // namespace
}  // namespace orv::util
