// A display for players who are sensitive to flashes: what it shows follows the drawn picture
// gradually, so that no place can light up and darken again quickly.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "host/screen/display_in_front.h"
#include "host/screen/shown_picture.h"

namespace kavo::host {

// One share is all the way.
constexpr int whole_share = 256;

// Moves every component of the pixels shown by `share` of its way to the drawn ones, 1 to
// whole_share. Rounded up, so that it arrives exactly, and never past it. Both have one size.
void follow(std::span<const uint32_t> drawn, std::span<uint32_t> shown, int share);

// Stands before another display. It is black at first, so that the first picture comes up softly,
// too; between two pictures it stays as it is, however long that takes. It can be switched off, and
// then only passes on what is drawn.
class CalmDisplay final : public DisplayInFront {
public:
  // The larger, the less it smears. `kavo-film flashes --calm=27 3 5000 4` counts three flashes in
  // a second of fast play at most, with 28 it counts four; this is half done as soon as 27.
  static constexpr int usual_share = 26;

  explicit CalmDisplay(std::unique_ptr<Presenter> display, int share = usual_share)
      : DisplayInFront(std::move(display)), share_(share) {}

  // Switched on between two pictures it goes on from the last one.
  void set_calm(bool is_calm) { is_calm_ = is_calm; }

  void present(Canvas& canvas) override;

private:
  void follow_where_it_moves(const Canvas& canvas, Canvas& shown);

  int share_;
  bool is_calm_ = true;
  bool is_behind_ = false;            // it was passed by since it showed something itself
  ShownPicture followed_;             // which picture it follows
  std::vector<bool> has_row_arrived_; // at what is drawn there
};

} // namespace kavo::host
