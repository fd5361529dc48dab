// Sequences behind cameras against their files.
#include "app/studio/view/BackdropPictures.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

#include "support/TempFolder.h"

namespace orv::tests {

TEST(BackdropPictures, ShowTheRightFileLoadAheadAndTellGapsOnce) {
  TempFolder folder;
  for (const int number : {98, 99, 100, 103}) {
    QImage picture(6, 4, QImage::Format_RGB888);
    picture.fill(QColor(number, 7, 9));
    const QString name = QString("shot2.%1.png").arg(number, 3, 10, QChar('0'));
    picture.save(QString::fromStdString(folder.path) + "/" + name);
  }
  folder.Write("shot2.none.png", "not of it");
  app::view::BackdropPictures pictures;
  const app::view::BackdropPictures::Backdrop backdrop{folder.path + "/shot2.099.png", 10, 1.0};
  const auto number = [&](int frame) {
    const auto texture = pictures.Find(backdrop, frame);
    return texture ? int{texture->pixels[0]} : -1;
  };
  EXPECT_EQ(number(10), 99);
  EXPECT_EQ(number(-50), 98) << "before the first";
  EXPECT_EQ(number(9), 98);
  EXPECT_EQ(number(10), 99);
  EXPECT_EQ(pictures.GetHeldCount(), 2u);
  while (pictures.LoadAhead()) {
  }
  EXPECT_EQ(pictures.GetHeldCount(), 3u) << "frames 11 to 13 show one file";
  EXPECT_EQ(number(12), 100) << "the one before a gap";
  EXPECT_EQ(number(5000), 103);
  const auto odd = pictures.TakeOdd();
  ASSERT_EQ(odd.size(), 1u);
  EXPECT_NE(odd[0].find("98 to 103 2 are missing"), std::string::npos) << odd[0];
  const auto gone = pictures.Find({folder.path + "/gone.png", 0, 1.0}, 0);
  EXPECT_FALSE(gone || pictures.Find({folder.path + "/gone.png", 0, 1.0}, 1));
  EXPECT_EQ(pictures.TakeOdd().size(), 1u);
}

}  // namespace orv::tests
