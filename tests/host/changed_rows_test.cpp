// Which rows of the picture a window still shows.
#include <gtest/gtest.h>

#include "host/screen/changed_rows.h"

namespace {

using kavo::host::Canvas;
using kavo::host::ChangedRows;
using kavo::host::Rows;

// {first, count} of each piece.
using Pieces = std::vector<std::vector<int>>;

Pieces pieces(ChangedRows& shown, const Canvas& canvas) {
  Pieces result;
  for (const Rows& rows : shown.find(canvas))
    result.push_back({rows.first, rows.count});
  return result;
}

class ChangedRowsTest : public testing::Test {
protected:
  void touch(int row, int x = 3) { canvas.fill_rectangle(x, row, 1, 1); }

  Canvas canvas{20, 40};
  ChangedRows shown;
};

TEST_F(ChangedRowsTest, AreAllWhenNothingIsShown) {
  EXPECT_FALSE(shown.is_known());
  EXPECT_EQ(pieces(shown, canvas), (Pieces{{0, 40}}));
  EXPECT_TRUE(shown.is_known());
}

TEST_F(ChangedRowsTest, AreNoneWhenThePictureIsAsItWas) {
  shown.find(canvas);
  EXPECT_TRUE(pieces(shown, canvas).empty());
  touch(7);
  shown.find(canvas);
  canvas.clear();
  touch(7);
  EXPECT_TRUE(pieces(shown, canvas).empty());
}

TEST_F(ChangedRowsTest, AreThoseWithAnyPixelChanged) {
  shown.find(canvas);
  touch(0, 0);
  touch(12);
  touch(39, 19);
  EXPECT_EQ(pieces(shown, canvas), (Pieces{{0, 1}, {12, 1}, {39, 1}}));
}

TEST_F(ChangedRowsTest, AreThoseSinceTheLastPictureNotSinceTheFirst) {
  shown.find(canvas);
  touch(5);
  shown.find(canvas);
  touch(20);
  EXPECT_EQ(pieces(shown, canvas), (Pieces{{20, 1}}));
  canvas.clear();
  EXPECT_EQ(pieces(shown, canvas), (Pieces{{5, 1}, {20, 1}}));
}

TEST_F(ChangedRowsTest, AreOnePieceWithHardlyARowBetweenThem) {
  shown.find(canvas);
  touch(5);
  touch(9);
  touch(14);
  EXPECT_EQ(pieces(shown, canvas), (Pieces{{5, 5}, {14, 1}}));
}

TEST_F(ChangedRowsTest, AreAsManyAsChangedWhereverTheyBegin) {
  for (int first = 0; first < canvas.height(); ++first)
    for (const int count : {1, 2, 3, 10, 40}) {
      if (first + count > canvas.height())
        continue;
      canvas.clear();
      shown.find(canvas);
      canvas.fill_rectangle(19, first, 1, count);
      ASSERT_EQ(pieces(shown, canvas), (Pieces{{first, count}}));
      ASSERT_TRUE(pieces(shown, canvas).empty()) << "not all of them were taken over";
    }
}

TEST_F(ChangedRowsTest, AreAllAgainOnceItIsForgotten) {
  shown.find(canvas);
  shown.forget();
  EXPECT_FALSE(shown.is_known());
  EXPECT_EQ(pieces(shown, canvas), (Pieces{{0, 40}}));
}

TEST_F(ChangedRowsTest, AreAllOfAPictureOfAnotherSize) {
  shown.find(canvas);
  EXPECT_EQ(pieces(shown, Canvas(20, 41)), (Pieces{{0, 41}}));
}

} // namespace
