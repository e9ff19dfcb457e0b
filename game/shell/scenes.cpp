#include "game/shell/scenes.h"

#include "game/commands.h"
#include "game/playfield/lean.h"
#include "game/playfield/movement.h"
#include "game/presentation/effects.h"
#include "game/presentation/entry.h"
#include "game/presentation/frame.h"
#include "game/presentation/options.h"
#include "game/presentation/title.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr unsigned settle_ms = 30; // long enough for what moves by the clock to have started

void set_cell(int64_t row, int64_t column, double kind) {
  put_cell(BOARD.get(), row, column, kind);
}

// A single falling block of this kind, with its matrix at this column and row.
void hold_single_block(int64_t kind, int64_t x, int64_t y) {
  CURRENTPIECE = zero_matrix(4, 4);
  put_cell(CURRENTPIECE.get(), 1, 1, 1.0);
  PIECECOLOR = kind;
  PIECEX = x;
  PIECEY = y;
}

Out<> draw_twice() {
  DO(DRAW());
  DO(qor_sleep(settle_ms));
  DO(DRAW());
  return {};
}

Out<> present_twice(Out<> (*draw_screen)()) {
  DO(draw_screen());
  DO(command::screen_flip());
  DO(qor_sleep(settle_ms));
  DO(draw_screen());
  DO(command::screen_flip());
  return {};
}

Out<> draw_frames(int64_t& counter, int64_t frames, unsigned pause_ms) {
  for (counter = 0; counter < frames; ++counter) {
    DO(DRAW());
    DO(qor_sleep(pause_ms));
  }
  return {};
}

Out<> scene_kavo() {
  for (RR = 9; RR <= 14; ++RR)
    for (CC = 6; CC <= 9; ++CC)
      DO(set_cell(RR, CC, static_cast<double>(RR % 3 + 3)));
  DO(set_cell(14, 0, 5));
  DO(set_cell(14, 1, 5));
  DO(set_cell(12, 7, 0));
  DO(set_cell(13, 8, 0));
  DO(set_cell(11, 9, 0));
  DO(draw_twice());
  DO(command::save_screenshot("tmp/kavo_before.png"));
  DO(APPLYKAVO());
  DO(draw_twice());
  DO(command::save_screenshot("tmp/kavo_after.png"));
  return {};
}

Out<> scene_pop() {
  DO(set_cell(14, 4, 6));
  DO(set_cell(14, 5, 6));
  DO(DRAW());
  DO(ADDPOPUP(BX + 144, BY + 396, 25));
  DO(ADDPOPUP(BX + 216, BY + 288, 400));
  DO(draw_frames(PF2, 10, 20));
  DO(command::save_screenshot("tmp/kavo_pop.png"));
  return {};
}

void set_star(int64_t slot, double row, double column) {
  qor_array_set(STAR_ON.get(), slot, 1.0);
  qor_array_set(STAR_R.get(), slot, row);
  qor_array_set(STAR_C.get(), slot, column);
}

Out<> drop_before_and_after(const char* before, const char* after) {
  DO(draw_twice());
  DO(command::save_screenshot(before));
  DO(HARDDROP());
  DO(draw_twice());
  DO(command::save_screenshot(after));
  return {};
}

Out<> scene_pu() {
  for (CC = 3; CC <= 6; ++CC) {
    DO(set_cell(14, CC, 3));
    DO(set_cell(13, CC, 4));
    DO(set_cell(12, CC, 5));
  }
  DO(set_cell(14, 0, 8));
  DO(set_cell(14, 1, 9));
  DO(set_cell(14, 8, 10));
  DO(set_cell(13, 0, 11));
  DO(set_cell(13, 1, 12));
  DO(set_star(0, 5, 7));
  DO(set_star(1, 4, 2));
  DO(hold_single_block(8, 3, 1));
  DO(drop_before_and_after("tmp/pu_before.png", "tmp/pu_after.png"));
  return {};
}

Out<> scatter_block(int64_t row, int64_t column) {
  if (TRY(command::rnd(1)) < 0.6)
    DO(set_cell(row, column, static_cast<double>(qor_int(TRY(command::rnd(1)) * 5) + 2)));
  return {};
}

Out<> scene_storm() {
  for (RR = 1; RR <= 14; ++RR)
    for (CC = 0; CC < COLS; ++CC)
      DO(scatter_block(RR, CC));
  DO(LIGHTNING = 3);
  DO(BOLTX = 300);
  DO(draw_twice());
  DO(command::save_screenshot("tmp/kavo_storm.png"));
  return {};
}

// A board that lies on its side.
Out<> scene_qbomb() {
  DO(ROWS = 10);
  DO(COLS = 15);
  const Array zero = numbers({0});
  const Array shape = numbers({10, 15});
  DO(BOARD = TRY(command::reshape(zero.get(), shape.get())));
  for (CC = 4; CC <= 9; ++CC) {
    DO(set_cell(9, CC, 3));
    DO(set_cell(8, CC, 4));
  }
  DO(hold_single_block(8, 5, 1));
  DO(drop_before_and_after("tmp/q_before.png", "tmp/q_after.png"));
  return {};
}

void set_high_score(int64_t slot, const char* name, double score) {
  put_text(HS_NAME.get(), slot, name);
  qor_array_set(HS_SCORE.get(), slot, score);
}

Out<> scene_title() {
  DO(set_high_score(0, "JON", 12000));
  DO(set_high_score(1, "ABE", 8400));
  DO(set_high_score(2, "ZED", 5000));
  DO(set_high_score(3, "QUI", 1200));
  DO(set_high_score(4, "---", 0));
  DO(present_twice(DRAWTITLE));
  DO(command::save_screenshot("tmp/kavo_title.png"));
  return {};
}

Out<> scene_opts() {
  DO(present_twice(DRAWOPTIONS));
  DO(command::save_screenshot("tmp/kavo_opts.png"));
  return {};
}

Out<> scene_enter() {
  DO(SCORE = 9999);
  DO(ENTERNAME = numbers({10, 0, 21}));
  DO(ENTERPOS = 1);
  DO(present_twice(DRAWENTER));
  DO(command::save_screenshot("tmp/kavo_enter.png"));
  return {};
}

void set_row(int64_t row, std::initializer_list<double> kinds) {
  int64_t column = 0;
  for (const double kind : kinds)
    set_cell(row, column++, kind);
}

Out<> scene_default() {
  DO(set_row(14, {3, 3, 4, 4, 0, 5, 5, 2, 0, 0}));
  DO(set_row(13, {3, 0, 0, 4, 0, 0, 5, 2, 0, 0}));
  DO(set_cell(12, 7, 1));
  DO(CURRENTPIECE = zero_matrix(4, 4));
  DO(put_cell(CURRENTPIECE.get(), 0, 1, 1));
  for (int64_t column = 0; column < 3; ++column)
    DO(put_cell(CURRENTPIECE.get(), 1, column, 1));
  DO(PIECECOLOR = 6);
  DO(PIECEX = 4);
  DO(PIECEY = 1);
  DO(draw_frames(F, 4, settle_ms));
  DO(command::save_screenshot("tmp/kavo.png"));
  return {};
}

struct Scene {
  const char* word;
  Out<> (*run)();
  const char* message;
};

constexpr Scene scenes[] = {
    {"kavo", scene_kavo, "kavo shots saved"}, {"pop", scene_pop, "pop shot saved"},
    {"pu", scene_pu, "pu shots saved"},       {"storm", scene_storm, "storm shot saved"},
    {"qbomb", scene_qbomb, "qbomb done"},     {"title", scene_title, "title shot"},
    {"opts", scene_opts, "opts shot"},        {"enter", scene_enter, "enter shot"},
};
constexpr Scene default_scene = {"", scene_default, "shot saved"};

const Scene& chosen_scene() {
  for (const Scene& scene : scenes)
    if (qor_str_eq(chars(TESTTAB$), scene.word) != 0)
      return scene;
  return default_scene;
}

} // namespace

Out<> run_scene() {
  ENTER();
  const Scene& scene = chosen_scene();
  DO(scene.run());
  DO(command::sound_shutdown());
  DO(command::gfx_close());
  qor_print_str(scene.message);
  qor_print_nl();
  return {};
}

} // namespace kavo
