// The menu bar: the toolkit's own static table.
#include "ui/Build.h"
#include "ui/Commands.h"
#include "ui/Put.h"

#include <FL/Fl_Menu_Bar.H>

namespace {

constexpr uchar kPlain = FL_NORMAL_LABEL;
constexpr Fl_Fontsize kSize = 14;

// clang-format off
const Fl_Menu_Item kMenu[] = {
  {"File",           0, nullptr,          nullptr, FL_SUBMENU, kPlain, FL_HELVETICA, kSize, 0},
  {"Load",           0, nullptr,          nullptr, FL_SUBMENU, kPlain, FL_HELVETICA, kSize, 0},
  {"GreyRawFile",    0, OnMenuGreyFile,   nullptr, 0,          kPlain, FL_HELVETICA, kSize, 0},
  {"SegRawFile",     0, OnMenuSegFile,    nullptr, 0,          kPlain, FL_HELVETICA, kSize, 0},
  {"Selection File", 0, OnMenuScript,     nullptr, 0,          kPlain, FL_HELVETICA, kSize, 0},
  {nullptr,          0, nullptr,          nullptr, 0,          0,      0,            0,     0},
  {"Create File",    0, OnMenuCreateFile, nullptr, 0,          kPlain, FL_HELVETICA, kSize, 0},
  {"Options",        0, OnMenuOptions,    nullptr, 0,          kPlain, FL_HELVETICA, kSize, 0},
  {"Refresh",        0, OnMenuRefresh,    nullptr, 0,          kPlain, FL_HELVETICA, kSize, 0},
  {"Quit",           0, OnMenuQuit,       nullptr, 0,          kPlain, FL_HELVETICA, kSize, 0},
  {nullptr,          0, nullptr,          nullptr, 0,          0,      0,            0,     0},
  {"Help",           0, nullptr,          nullptr, FL_SUBMENU, kPlain, FL_HELVETICA, kSize, 0},
  {"First step...",  0, OnMenuFirstSteps, nullptr, 0,          kPlain, FL_HELVETICA, kSize, 0},
  {"About",          0, OnMenuAbout,      nullptr, 0,          kPlain, FL_HELVETICA, kSize, 0},
  {nullptr,          0, nullptr,          nullptr, 0,          0,      0,            0,     0},
  {nullptr,          0, nullptr,          nullptr, 0,          0,      0,            0,     0},
};
// clang-format on

}  // namespace

void BuildMenuBar(MainUI& ui) {
  ui.menuBar = Put<Fl_Menu_Bar>({15, 10, 125, 20});
  ui.menuBar->menu(kMenu);
}
