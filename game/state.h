// Every program-wide variable of the game, once. They are grouped by what they belong to; the
// initial values are in set_initial_values(), which start-up and tests share.
//
// Units: positions and sizes in pixels, board positions in cells, times in milliseconds, lives and
// timers in drawn frames.
#pragma once

#include <cstdint>

#include "game/routine.h"
#include "game/values.h"

namespace kavo {

// ---- geometry and rules ----------------------------------------------------------------------
// The lean swaps these two, so whoever needs them reads them at that moment.
extern int64_t ROWS; // board height in cells
extern int64_t COLS; // board width in cells

inline constexpr int64_t CELL = 36;  // side of one cell
inline constexpr int64_t AREA = 540; // side of the square play area that the board is centred in
inline constexpr int64_t SCRW = 660;
inline constexpr int64_t SCRH = 800;
extern double AX; // left edge of the play area
extern double AY; // top edge of the play area
extern double BX; // left edge of the board, shake included; the frame drawing rewrites it
extern double BY; // top edge of the board, likewise

inline constexpr int64_t KAVO_HIGH = 40; // pull beyond which the board tips
inline constexpr int64_t KAVO_LOW = 18;  // pull below which it counts as balanced
extern bool KAVOARMED;                   // the board may tip only while this holds

// ---- board and pieces ------------------------------------------------------------------------
extern Array BOARD;        // ROWS rows of COLS cells; 0 empty, else the kind of the block, 1..12
extern Array CURRENTPIECE; // 4 x 4 shape of the falling piece
extern int64_t PIECEX;     // board column of the shape's left edge
extern int64_t PIECEY;     // board row of its top edge
extern int64_t PIECECOLOR; // its kind
extern Array NEXTPIECE;
extern int64_t NEXTCOLOR;

// ---- the game in progress --------------------------------------------------------------------
extern int64_t SCORE;
extern int64_t LINESCLEARED;
extern int64_t LEVEL;
extern bool GAMEOVER;
extern int64_t REARMIN;     // locks until the lean is armed again
extern int64_t COMBO;       // consecutive locks that cleared a row
extern int64_t CLEAREDTURN; // rows cleared by the current lock, all causes together
extern int64_t COMBOFLASH;  // frames left of the combo banner
extern int64_t COMBOSHOW;   // the number it shows
extern int64_t PUKIND;      // power-up carried by the last locked piece, 0 for none
extern int64_t PUBR;        // and its board cell
extern int64_t PUBC;
extern double LASTDROP; // time of the last gravity step

// Working variables of the lean, clearing and locking routines.
extern int64_t TMP;
extern int64_t GAIN;
extern int64_t PTS;
extern int64_t CBONUS;
extern int64_t CLEARED;
extern Dynamic CELLV;
extern Dynamic V;

// ---- effects on screen -----------------------------------------------------------------------
extern int64_t SHAKE; // frames of screen shake left, also its strength
extern int64_t FLASH; // frames left of the tip-over banner

inline constexpr int64_t NPOP = 16;
extern Array POP_X, POP_Y, POP_LIFE, POP_VAL;

inline constexpr int64_t NSTAR = 6;
extern Array STAR_R, STAR_C, STAR_ON;

inline constexpr int64_t NPART = 140;
extern Array PAR_X, PAR_Y, PAR_VX, PAR_VY, PAR_LIFE, PAR_R, PAR_G, PAR_B;

inline constexpr int64_t NSTREAK = 8;
extern Array STR_X, STR_Y0, STR_Y1, STR_LIFE;

extern int64_t SHOCKLIFE;
extern double SHOCKX, SHOCKY;

inline constexpr int64_t NBG = 40;
extern Array BGSTAR_X, BGSTAR_Y;

extern int64_t LIGHTNING;
extern int64_t BOLTX;

// ---- shell, sound, high scores ---------------------------------------------------------------
extern Text GSTATE$; // "title", "options", "play", "pause" or "enter"
extern int64_t MUSICON;
extern int64_t SFXON;
extern int64_t OPTSEL; // selected row of the options screen
extern bool QUITFLAG;
extern double NOW;        // start of the current frame
extern double STEPEVERY;  // gravity interval of the current frame
extern Array HS_NAME;     // five names, best first
extern Array HS_SCORE;    // their points
extern Array ENTERNAME;   // letter indexes 0..26 of the name being entered
extern int64_t ENTERPOS;  // the letter being edited
extern int64_t ENTERRANK; // slot that the new score will take, -1 for none

// ---- input: current value, value of the previous frame, pressed-in-this-frame edge ------------
extern bool KL, KR, KU, KDN;
extern double KSPACE, KENTER, KP, KO, KMK, KESC;
extern double PL, PR, PU, PDN, PSPACE, PENTER, PP, PO, PMK, PESC;
extern bool EL, ER, EU, EDN, ESPACE, EENTER, EP, EO, EMK, EESC;

// ---- command line and loop counters of start-up and scenes -------------------------------------
extern Array ARGS; // the process arguments, program path first
extern bool TESTMODE;
extern Text TESTTAB$; // the scene word
extern int64_t BI, RR, CC, PF2, F;

// ------------------------------------------------------------------------------------------------

// Geometry and rules, the part of the state that must stand before the screen opens.
void set_geometry();

// Everything else, in the order of declaration. The background stars stay at 0 until start-up
// places them.
void set_initial_values();

// Empties every variable that owns memory, so that a leak checker sees only real leaks.
void release_state();

// Starts a new game on a fresh 15 x 10 board. High scores, switches and the timers that only fade
// out (SHAKE, FLASH) stay as they are.
Out<> RESETGAME();

// The screen state.
bool state_is(const char* state);
void enter_state(const char* state);

} // namespace kavo
