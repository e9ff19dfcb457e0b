#include "game/state.h"

#include "game/commands.h"
#include "game/playfield/pieces.h"

namespace kavo {

int64_t ROWS, COLS;
double AX, AY, BX, BY;
bool KAVOARMED;

Array BOARD, CURRENTPIECE;
int64_t PIECEX, PIECEY, PIECECOLOR;
Array NEXTPIECE;
int64_t NEXTCOLOR;

int64_t SCORE, LINESCLEARED, LEVEL;
bool GAMEOVER;
int64_t REARMIN, COMBO, CLEAREDTURN, COMBOFLASH, COMBOSHOW, PUKIND, PUBR, PUBC;
double LASTDROP;
int64_t TMP, GAIN, PTS, CBONUS, CLEARED;
Dynamic CELLV, V;

int64_t SHAKE, FLASH;
Array POP_X, POP_Y, POP_LIFE, POP_VAL;
Array STAR_R, STAR_C, STAR_ON;
Array PAR_X, PAR_Y, PAR_VX, PAR_VY, PAR_LIFE, PAR_R, PAR_G, PAR_B;
Array STR_X, STR_Y0, STR_Y1, STR_LIFE;
int64_t SHOCKLIFE;
double SHOCKX, SHOCKY;
Array BGSTAR_X, BGSTAR_Y;
int64_t LIGHTNING, BOLTX;

Text GSTATE$;
int64_t MUSICON, SFXON, OPTSEL;
bool QUITFLAG;
double NOW, STEPEVERY;
Array HS_NAME, HS_SCORE, ENTERNAME;
int64_t ENTERPOS, ENTERRANK;

bool KL, KR, KU, KDN;
double KSPACE, KENTER, KP, KO, KMK, KESC;
double PL, PR, PU, PDN, PSPACE, PENTER, PP, PO, PMK, PESC;
bool EL, ER, EU, EDN, ESPACE, EENTER, EP, EO, EMK, EESC;

Array ARGS;
bool TESTMODE;
Text TESTTAB$;
int64_t BI, RR, CC, PF2, F;

namespace {

void set_all(std::initializer_list<Array*> pools, int64_t count) {
  for (Array* pool : pools)
    *pool = zeros(count);
}

void clear_all(QorArray* pool, int64_t count) {
  for (int64_t slot = 0; slot < count; ++slot)
    qor_array_set(pool, slot, 0.0);
}

void set_initial_board() {
  BOARD = zero_matrix(ROWS, COLS);
  CURRENTPIECE = zero_matrix(4, 4);
  PIECEX = PIECEY = PIECECOLOR = 0;
  NEXTPIECE = zero_matrix(4, 4);
  NEXTCOLOR = 0;
}

void set_initial_game() {
  SCORE = LINESCLEARED = 0;
  LEVEL = 1;
  GAMEOVER = false;
  REARMIN = COMBO = CLEAREDTURN = COMBOFLASH = COMBOSHOW = 0;
  PUKIND = PUBR = PUBC = 0;
  LASTDROP = 0.0;
  TMP = GAIN = PTS = CBONUS = CLEARED = 0;
  CELLV = V = Dynamic{};
}

void set_initial_effects() {
  SHAKE = FLASH = 0;
  set_all({&POP_X, &POP_Y, &POP_LIFE, &POP_VAL}, NPOP);
  set_all({&STAR_R, &STAR_C, &STAR_ON}, NSTAR);
  set_all({&PAR_X, &PAR_Y, &PAR_VX, &PAR_VY, &PAR_LIFE, &PAR_R, &PAR_G, &PAR_B}, NPART);
  set_all({&STR_X, &STR_Y0, &STR_Y1, &STR_LIFE}, NSTREAK);
  SHOCKLIFE = 0;
  SHOCKX = SHOCKY = 0.0;
  set_all({&BGSTAR_X, &BGSTAR_Y}, NBG);
  LIGHTNING = BOLTX = 0;
}

void set_initial_shell() {
  enter_state("title");
  MUSICON = SFXON = 1;
  OPTSEL = 0;
  QUITFLAG = false;
  NOW = STEPEVERY = 0.0;
  HS_NAME = texts(5, "---");
  HS_SCORE = zeros(5);
  ENTERNAME = zeros(3);
  ENTERPOS = 0;
  ENTERRANK = -1;
}

void set_initial_input() {
  KL = KR = KU = KDN = false;
  KSPACE = KENTER = KP = KO = KMK = KESC = 0.0;
  PL = PR = PU = PDN = PSPACE = PENTER = PP = PO = PMK = PESC = 0.0;
  EL = ER = EU = EDN = ESPACE = EENTER = EP = EO = EMK = EESC = false;
}

} // namespace

void set_geometry() {
  ROWS = 15;
  COLS = 10;
  AX = 60.0;
  AY = 80.0;
  BX = BY = 0.0;
  KAVOARMED = true;
}

void set_initial_values() {
  set_initial_board();
  set_initial_game();
  set_initial_effects();
  set_initial_shell();
  set_initial_input();
  ARGS.reset();
  TESTMODE = false;
  TESTTAB$ = copy("");
  BI = RR = CC = PF2 = F = 0;
}

void release_state() {
  for (Array* array :
       {&BOARD,    &CURRENTPIECE, &NEXTPIECE, &POP_X,   &POP_Y,    &POP_LIFE,  &POP_VAL,
        &STAR_R,   &STAR_C,       &STAR_ON,   &PAR_X,   &PAR_Y,    &PAR_VX,    &PAR_VY,
        &PAR_LIFE, &PAR_R,        &PAR_G,     &PAR_B,   &STR_X,    &STR_Y0,    &STR_Y1,
        &STR_LIFE, &BGSTAR_X,     &BGSTAR_Y,  &HS_NAME, &HS_SCORE, &ENTERNAME, &ARGS})
    array->reset();
  GSTATE$.reset();
  TESTTAB$.reset();
}

Out<> RESETGAME() {
  ENTER();
  DO(ROWS = 15);
  DO(COLS = 10);
  const Array zero = numbers({0});
  const Array shape = numbers({15, 10});
  DO(BOARD = TRY(command::reshape(zero.get(), shape.get())));
  SCORE = LINESCLEARED = 0;
  LEVEL = 1;
  GAMEOVER = false;
  COMBO = CLEAREDTURN = COMBOFLASH = SHOCKLIFE = 0;
  KAVOARMED = true;
  REARMIN = LIGHTNING = 0;
  clear_all(PAR_LIFE.get(), NPART);
  clear_all(STAR_ON.get(), NSTAR);
  clear_all(POP_LIFE.get(), NPOP);
  clear_all(STR_LIFE.get(), NSTREAK);
  DO(ROLLNEXT());
  DO(SPAWNPIECE());
  DO(LASTDROP = qor_tick());
  return {};
}

bool state_is(const char* state) {
  return qor_str_eq(chars(GSTATE$), state) != 0;
}
void enter_state(const char* state) {
  GSTATE$ = copy(state);
}

} // namespace kavo
