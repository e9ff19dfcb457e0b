// Where a canvas tells that its picture has changed, and that it draws there what it must.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "host/screen/canvas.h"
#include "host/screen/shown_picture.h"

namespace {

using kavo::host::Area;
using kavo::host::Canvas;
using kavo::host::ShownPicture;

constexpr int width = 300;
constexpr int height = 200;

using Pixels = std::vector<uint32_t>;

Pixels copied(const Canvas& canvas) {
  return {canvas.pixels().begin(), canvas.pixels().end()};
}

bool is_within(const std::vector<Area>& areas, int x, int y) {
  return std::ranges::any_of(areas, [x, y](const Area& area) {
    return x >= area.x && x < area.x + area.width && y >= area.y && y < area.y + area.height;
  });
}

int pixels_in(const std::vector<Area>& areas) {
  int count = 0;
  for (const Area& area : areas)
    count += area.width * area.height;
  return count;
}

// A canvas and what is told of it from frame to frame.
class CanvasChanges : public testing::Test {
protected:
  using Draw = std::function<void(Canvas&)>;

  // A frame on a ground of one colour, as the game draws all of its.
  std::vector<Area> frame(const Draw& draw, uint32_t ground = 0x000C1A2C) {
    const uint64_t version = picture.version();
    begin(ground);
    draw(picture);
    return picture.changed_since(version);
  }
  void begin(uint32_t ground) {
    picture.clear();
    picture.set_colour(ground);
    picture.fill_rectangle(0, 0, width, height);
    picture.set_colour(0x00FFFFFF);
  }

  Canvas picture{width, height};
};

void draw_a_scene(Canvas& canvas) {
  canvas.fill_rectangle(10, 10, 50, 30);
  canvas.outline_rectangle(100, 20, 60, 60);
  canvas.line(5, 190, 280, 130);
  canvas.text(150, 100, "score 1200");
}

TEST_F(CanvasChanges, AreNoneWhenTheSameIsDrawnAgain) {
  frame(draw_a_scene);
  EXPECT_TRUE(frame(draw_a_scene).empty());
}

TEST_F(CanvasChanges, AreWhatDiffersAndLittleMore) {
  frame(draw_a_scene);
  const std::vector<Area> areas = frame([](Canvas& canvas) {
    draw_a_scene(canvas);
    canvas.fill_rectangle(200, 50, 2, 2);
  });
  EXPECT_TRUE(is_within(areas, 200, 50));
  EXPECT_TRUE(is_within(areas, 201, 51));
  EXPECT_LE(pixels_in(areas), 4 * 32 * 8);
}

TEST_F(CanvasChanges, AreWhatIsGoneToo) {
  frame(draw_a_scene);
  const std::vector<Area> areas = frame([](Canvas&) {});
  EXPECT_TRUE(is_within(areas, 10, 10));
  EXPECT_TRUE(is_within(areas, 5, 190));
  EXPECT_EQ(picture.row(10)[10], 0x000C1A2CU);
}

TEST_F(CanvasChanges, AreTheWholePictureOnAnotherGround) {
  frame(draw_a_scene);
  EXPECT_EQ(pixels_in(frame(draw_a_scene, 0x00102030)), width * height);
}

TEST_F(CanvasChanges, AreNoneWhereAnotherShapeHidesThem) {
  const auto frame_with_star = [this](uint32_t colour) {
    return frame([colour](Canvas& canvas) {
      canvas.set_colour(colour);
      canvas.fill_rectangle(70, 70, 2, 2);
      canvas.set_colour(0x00223344);
      canvas.fill_rectangle(40, 40, 100, 100);
    });
  };
  frame_with_star(1);
  EXPECT_TRUE(frame_with_star(2).empty());
}

TEST_F(CanvasChanges, TellTheOrderOfShapes) {
  const auto frame_of = [this](uint32_t first, uint32_t second) {
    return frame([=](Canvas& canvas) {
      for (const uint32_t colour : {first, second}) {
        canvas.set_colour(colour);
        canvas.fill_rectangle(50, 50, 5, 5);
      }
    });
  };
  frame_of(1, 2);
  EXPECT_FALSE(frame_of(2, 1).empty());
  EXPECT_EQ(picture.row(50)[50], 1U);
}

TEST_F(CanvasChanges, TellEveryLetterAndItsColour) {
  const auto frame_with = [this](const std::string& text, uint32_t colour) {
    return frame([&](Canvas& canvas) {
      canvas.set_colour(colour);
      canvas.text(20, 20, text);
    });
  };
  frame_with("12345678901234567", 0x00FFFFFF);
  EXPECT_FALSE(frame_with("12345678901234568", 0x00FFFFFF).empty());
  EXPECT_FALSE(frame_with("12345678901234568", 0x00FFFFFE).empty());
  EXPECT_FALSE(frame_with("1234567890123456", 0x00FFFFFE).empty());
  EXPECT_TRUE(frame_with("1234567890123456", 0x00FFFFFE).empty());
}

TEST_F(CanvasChanges, AreCountedFromAnyVersion) {
  const auto frame_with = [this](int y) {
    frame([y](Canvas& canvas) { canvas.fill_rectangle(0, y, 4, 4); });
  };
  frame_with(0);
  const uint64_t first = picture.version();
  frame_with(80);
  const uint64_t second = picture.version();
  frame_with(160);
  EXPECT_GT(second, first);
  EXPECT_TRUE(is_within(picture.changed_since(first), 0, 0));
  EXPECT_FALSE(is_within(picture.changed_since(second), 0, 0));
  EXPECT_TRUE(is_within(picture.changed_since(second), 0, 80));
  EXPECT_TRUE(picture.changed_since(picture.version()).empty());
}

TEST_F(CanvasChanges, AreTheRowsThatWereWrittenPixelByPixel) {
  frame(draw_a_scene);
  const uint64_t version = picture.version();
  picture.pixels_to_change({90, 92})[0] = 7;
  const std::vector<Area> areas = picture.changed_since(version);
  EXPECT_TRUE(is_within(areas, 0, 90));
  EXPECT_TRUE(is_within(areas, width - 1, 91));
  EXPECT_LE(pixels_in(areas), width * 16);
  frame(draw_a_scene);
  EXPECT_EQ(picture.row(90)[0], 0x000C1A2CU);
}

TEST_F(CanvasChanges, AreFoundOfMoreShapesThanAnyFrameHas) {
  const auto many = [](Canvas& canvas) {
    for (int i = 0; i < 20'000; ++i) {
      canvas.set_colour(static_cast<uint32_t>(i));
      canvas.fill_rectangle(i % 290, i / 290 % 190, 3, 3);
    }
  };
  frame(many);
  Canvas fresh(width, height);
  fresh.set_colour(0x000C1A2C);
  fresh.fill_rectangle(0, 0, width, height);
  many(fresh);
  EXPECT_EQ(copied(picture), copied(fresh));
}

// As the game does: a scene that mostly stays, and a few things that move on it.
struct Moving {
  std::mt19937 random{3};
  std::vector<std::vector<int>> shapes;

  int any(int least, int most) { return std::uniform_int_distribution(least, most)(random); }
  std::vector<int> any_shape() {
    return {any(0, 4), any(-20, width), any(-20, height), any(0, 90), any(0, 90), any(0, 4)};
  }
  void move() {
    if (shapes.size() < 60)
      shapes.push_back(any_shape());
    else
      for (int count = any(0, 3); count > 0; --count)
        shapes[static_cast<size_t>(any(0, 59))] = any_shape();
  }
  void draw(Canvas& canvas) const {
    constexpr uint32_t colours[] = {0x00FFFFFF, 0x00FFCC33, 0x00003366, 0x000C1A2C, 0x00C8C8C8};
    for (const auto& shape : shapes) {
      canvas.set_colour(colours[static_cast<size_t>(shape[5])]);
      draw(canvas, shape);
    }
  }
  static void draw(Canvas& canvas, const std::vector<int>& shape) {
    switch (shape[0]) {
    case 0:
      return canvas.fill_rectangle(shape[1], shape[2], shape[3], shape[4]);
    case 1:
      return canvas.outline_rectangle(shape[1], shape[2], shape[3], shape[4]);
    case 2:
      return canvas.line(shape[1], shape[2], shape[1] + shape[3], shape[2] - shape[4]);
    case 3:
      return canvas.line(shape[1], shape[2], shape[1] - shape[4], shape[2] + shape[3]);
    default:
      return canvas.text(shape[1], shape[2], "äW " + std::to_string(shape[3]));
    }
  }
};

TEST_F(CanvasChanges, LeaveThePictureThatAFreshCanvasHasAndNothingElseChanged) {
  Moving scene;
  Pixels before = copied(picture);
  for (int frame_number = 0; frame_number < 400; ++frame_number) {
    scene.move();
    const uint32_t ground = frame_number / 100 * 0x00010101U;
    const std::vector<Area> areas = frame([&](Canvas& drawn) { scene.draw(drawn); }, ground);
    const Pixels now = copied(picture);
    Canvas fresh(width, height);
    fresh.set_colour(ground);
    fresh.fill_rectangle(0, 0, width, height);
    scene.draw(fresh);
    ASSERT_EQ(now, copied(fresh)) << frame_number;
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) {
        const size_t pixel = static_cast<size_t>(y) * width + static_cast<size_t>(x);
        ASSERT_TRUE(now[pixel] == before[pixel] || is_within(areas, x, y)) << frame_number;
      }
    before = now;
  }
}

TEST_F(CanvasChanges, DoNotOverlap) {
  Moving scene;
  for (int frame_number = 0; frame_number < 100; ++frame_number) {
    scene.move();
    std::vector<int> times(size_t{width} * height);
    for (const Area& area : frame([&](Canvas& drawn) { scene.draw(drawn); }))
      for (int y = area.y; y < area.y + area.height; ++y)
        for (int x = area.x; x < area.x + area.width; ++x)
          ASSERT_EQ(++times[static_cast<size_t>(y) * width + static_cast<size_t>(x)], 1)
              << frame_number;
  }
}

TEST(CanvasOfAnySize, TellsItsFirstAndItsLastPixel) {
  for (const int wide : {1, 31, 32, 33, 2047, 2048, 2049, 8192})
    for (const int high : {1, 7, 8, 9, 33}) {
      Canvas canvas(wide, high);
      for (const auto& [x, y] : {std::pair(0, 0), {wide - 1, high - 1}}) {
        const uint64_t version = canvas.version();
        canvas.set_colour(static_cast<uint32_t>(version));
        canvas.fill_rectangle(x, y, 1, 1);
        EXPECT_TRUE(is_within(canvas.changed_since(version), x, y)) << wide << " x " << high;
      }
    }
}

TEST(ShownPictures, AreWholeWhenAnotherIsShownOrWhatWasShownIsLost) {
  Canvas one(width, height), other(width, height);
  ShownPicture shown;
  EXPECT_FALSE(shown.is_known());
  EXPECT_EQ(pixels_in(shown.take_changes(one)), width * height);
  EXPECT_TRUE(shown.take_changes(one).empty());
  one.fill_rectangle(0, 0, 1, 1);
  EXPECT_EQ(pixels_in(shown.take_changes(one)), 32 * 8);
  EXPECT_EQ(pixels_in(shown.take_changes(other)), width * height);
  EXPECT_EQ(pixels_in(shown.take_changes(one)), width * height);
  shown.forget();
  EXPECT_EQ(pixels_in(shown.take_changes(one)), width * height);
}

} // namespace
