// The display that follows what is drawn: how it goes from one picture to another.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/screen/calm_display.h"

namespace {

using kavo::host::CalmDisplay;
using kavo::host::Canvas;
using kavo::host::EventSink;
using kavo::host::follow;
using kavo::host::Presenter;
using kavo::host::whole_share;

using Pixels = std::vector<uint32_t>;

int component(uint32_t pixel, unsigned index) {
  return static_cast<int>(pixel >> 8U * index & 0xFFU);
}

// Every way of a component from one value to another, three of them in each pixel.
struct AllWays {
  AllWays() {
    for (uint32_t start = 0; start < 256; ++start)
      for (uint32_t end = 0; end < 256; ++end) {
        from.push_back(start << 16U | (255 - start) << 8U | end);
        to.push_back(end << 16U | (255 - end) << 8U | start);
      }
  }
  Pixels from;
  Pixels to;
};

class CalmDisplayOfShare : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(OfTheWay, CalmDisplayOfShare,
                         testing::Values(1, CalmDisplay::usual_share, 100, 255, whole_share));

// Whether a component goes its share of the way, rounded up.
bool goes_its_share(int before, int now, int to, int share) {
  const int way = std::abs(to - before);
  const int gone = (way * share + whole_share - 1) / whole_share;
  return std::abs(now - before) == gone && std::abs(to - now) == way - gone;
}

TEST_P(CalmDisplayOfShare, GoesItsShareAndNeverBackOrPast) {
  const AllWays ways;
  Pixels shown = ways.from;
  follow(ways.to, shown, GetParam());
  for (size_t way = 0; way < shown.size(); ++way)
    for (const unsigned index : {0U, 1U, 2U})
      ASSERT_TRUE(goes_its_share(component(ways.from[way], index), component(shown[way], index),
                                 component(ways.to[way], index), GetParam()))
          << std::hex << ways.from[way] << " to " << ways.to[way] << ": " << shown[way];
}

TEST_P(CalmDisplayOfShare, ArrivesExactlyAndStays) {
  const AllWays ways;
  Pixels shown = ways.from;
  for (int frame = 0; frame < 255; ++frame)
    follow(ways.to, shown, GetParam());
  EXPECT_EQ(shown, ways.to);
  follow(ways.to, shown, GetParam());
  EXPECT_EQ(shown, ways.to);
}

TEST(CalmDisplay, TreatsTheLastPixelsOfAnyNumberLikeTheOthers) {
  for (size_t count = 0; count < 40; ++count) {
    const Pixels drawn(count, 0x00FF8000);
    Pixels shown(count + 1);
    follow(drawn, std::span(shown).first(count), 128);
    Pixels expected(count, 0x00804000);
    expected.push_back(0);
    ASSERT_EQ(shown, expected) << count;
  }
}

// Keeps the pixels that it was to show, and the picture in its own memory if it is told to.
class Wall final : public Presenter {
public:
  explicit Wall(Pixels& seen, bool takes_the_picture_in = false)
      : seen_(seen), takes_the_picture_in_(takes_the_picture_in) {}
  ~Wall() override {
    if (lodger_ != nullptr)
      lodger_->move_home();
  }
  Wall(const Wall&) = delete;
  Wall& operator=(const Wall&) = delete;

  void present(Canvas& canvas) override {
    seen_.assign(canvas.pixels().begin(), canvas.pixels().end());
    if (!takes_the_picture_in_)
      return;
    memory_.resize(seen_.size());
    if (lodger_ != nullptr && lodger_ != &canvas)
      lodger_->move_home();
    canvas.move_to(memory_.data());
    lodger_ = &canvas;
  }
  void deliver_events(EventSink& sink) override { sink.close_was_asked(); }
  const std::string& unplayable_reason() const override { return reason_; }

private:
  Pixels& seen_;
  bool takes_the_picture_in_;
  Pixels memory_;
  Canvas* lodger_ = nullptr;
  std::string reason_ = "a wall";
};

Canvas one_pixel(uint32_t colour) {
  Canvas canvas(1, 1);
  canvas.set_colour(colour);
  canvas.fill_rectangle(0, 0, 1, 1);
  return canvas;
}

TEST(CalmDisplay, BringsTheFirstPictureUpFromBlack) {
  Pixels seen;
  CalmDisplay display(std::make_unique<Wall>(seen), 64);
  Canvas drawn = one_pixel(0x00FF0080);
  display.present(drawn);
  EXPECT_EQ(seen, Pixels{0x00400020});
  display.present(drawn);
  EXPECT_EQ(seen, Pixels{0x00700038});
}

TEST(CalmDisplay, LeavesWhatIsDrawnAsItIs) {
  Pixels seen;
  CalmDisplay display(std::make_unique<Wall>(seen, true));
  Canvas drawn = one_pixel(0x00FFFFFF);
  display.present(drawn);
  EXPECT_EQ(drawn.row(0)[0], 0x00FFFFFFU);
  EXPECT_NE(seen, Pixels{0x00FFFFFF});
}

TEST(CalmDisplay, GoesOnWhereItWasInTheDisplaysMemoryToo) {
  Pixels seen_at_home, seen_in_memory;
  CalmDisplay home(std::make_unique<Wall>(seen_at_home));
  CalmDisplay memory(std::make_unique<Wall>(seen_in_memory, true));
  for (int frame = 0; frame < 40; ++frame) {
    Canvas drawn = one_pixel(frame < 20 ? 0x00FFCC33 : 0x00003366);
    home.present(drawn);
    memory.present(drawn);
    ASSERT_EQ(seen_at_home, seen_in_memory) << frame;
  }
}

struct CountsCloses : EventSink {
  void key_went_down(const kavo::host::Key&, bool) override {}
  void key_went_up(const kavo::host::Key&) override {}
  void keyboard_was_taken() override {}
  void button_went_down(int, int, int) override {}
  void button_went_up(int, int, int) override {}
  void pointer_moved(int, int) override {}
  void close_was_asked() override { ++closes; }
  int closes = 0;
};

TEST(CalmDisplay, SwitchedOffShowsWhatIsDrawnAndSwitchedOnGoesOnFromThere) {
  for (const bool takes_the_picture_in : {false, true}) {
    Pixels seen;
    Canvas bright = one_pixel(0x00FF0080);
    Canvas dark = one_pixel(0);
    CalmDisplay display(std::make_unique<Wall>(seen, takes_the_picture_in), 64);
    display.set_calm(false);
    display.present(bright);
    EXPECT_EQ(seen, Pixels{0x00FF0080});
    display.set_calm(true);
    display.present(bright);
    EXPECT_EQ(seen, Pixels{0x00FF0080});
    display.present(dark);
    EXPECT_EQ(seen, Pixels{0x00BF0060});
    display.set_calm(false);
    display.present(dark);
    EXPECT_EQ(seen, Pixels{0});
  }
}

TEST(CalmDisplay, PassesOnWhatTheDisplayTells) {
  Pixels seen;
  CalmDisplay display(std::make_unique<Wall>(seen));
  CountsCloses sink;
  display.deliver_events(sink);
  EXPECT_EQ(sink.closes, 1);
  EXPECT_EQ(display.unplayable_reason(), "a wall");
}

} // namespace
