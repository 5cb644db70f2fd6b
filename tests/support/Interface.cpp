#include "tests/support/Interface.h"

#include "ui/Modal.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Menu_Bar.H>
#include <FL/Fl_Valuator.H>
#include <FL/gl.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <iostream>

std::vector<std::string> Interface::alerts;
std::vector<std::string> Interface::chooserTitles;
std::deque<std::optional<std::string>> Interface::chooserAnswers;

namespace {

void CollectAlert(const char* text) { Interface::alerts.emplace_back(text); }

std::optional<std::string> AnswerChooser(const char* title, const char* pattern,
                                         const char* /*preset*/) {
  Interface::chooserTitles.push_back(std::string(title) + "|" +
                                     (pattern != nullptr ? pattern : ""));
  if (Interface::chooserAnswers.empty()) { return std::nullopt; }
  std::optional<std::string> answer = Interface::chooserAnswers.front();
  Interface::chooserAnswers.pop_front();
  return answer;
}

// Interfaces of earlier tests: their widgets live to the end of the process, as the product's do.
std::vector<MainUI*>& EarlierInterfaces() {
  static auto& earlier = *new std::vector<MainUI*>;  // reachable to the very end
  return earlier;
}

void HideAllWindows() {
  while (Fl_Window* window = Fl::first_window()) { window->hide(); }
}

void SetEvent(Fl_Window* window, int x, int y, int button) {
  // The toolkit takes the place of every window above the target off, the top one's on the screen
  // as well: for a view it has to be put on before.
  const bool view = window->parent() != nullptr;
  Fl::e_x = x + (view ? window->top_window()->x() : 0);
  Fl::e_y = y + (view ? window->top_window()->y() : 0);
  Fl::e_x_root = x + window->x_root();
  Fl::e_y_root = y + window->y_root();
  Fl::e_keysym = FL_Button + button;
  Fl::e_clicks = 0;
  Fl::e_is_click = 1;
}

int StateBit(int button) {
  if (button == 1) { return FL_BUTTON1; }
  return button == 2 ? FL_BUTTON2 : FL_BUTTON3;
}

}  // namespace

void Interface::SetUp() {
  modal::Current() = {CollectAlert, AnswerChooser};
  alerts.clear();
  chooserTitles.clear();
  chooserAnswers.clear();
  HideAllWindows();
  EarlierInterfaces().push_back(mainUI);
  delete viewState;
  delete referenceState;
  viewState = new ViewState;
  referenceState = new ViewState;
  lastDirection = 2;
  currentDirection = 0;
  mainUI = new MainUI;
  Fl::visual(FL_DOUBLE | FL_INDEX);
  mainUI->ShowAll();
  mainUI->mainWindow->wait_for_expose();
  Settle();
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
}

void Interface::TearDown() {
  const std::string output = testing::internal::GetCapturedStdout();
  const std::string errors = testing::internal::GetCapturedStderr();
  if (HasFailure()) { std::cout << output << errors; }  // the failures are told there
  HideAllWindows();
  modal::Current() = modal::Toolkit();
}

std::string Interface::TakeOutput() {
  std::fflush(stdout);
  std::string text = testing::internal::GetCapturedStdout();
  testing::internal::CaptureStdout();
  return text;
}

std::string Interface::TakeErrors() {
  std::fflush(stderr);
  std::string text = testing::internal::GetCapturedStderr();
  testing::internal::CaptureStderr();
  return text;
}

void Interface::Settle() {
  for (int i = 0; i < 3; ++i) {
    Fl::check();
    Fl::flush();
  }
}

bool Interface::WaitFor(const std::function<bool()>& done, double seconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) { return false; }
    Fl::wait(0.02);
  }
  return true;
}

void Interface::Press(Fl_Window* window, int x, int y, int button) {
  SetEvent(window, x, y, button);
  Fl::e_state |= StateBit(button);
  Fl::handle(FL_PUSH, window);
}

void Interface::DragTo(Fl_Window* window, int x, int y, int button) {
  SetEvent(window, x, y, button);
  Fl::e_is_click = 0;
  Fl::e_state |= StateBit(button);
  Fl::handle(FL_DRAG, window);
}

void Interface::Release(Fl_Window* window, int x, int y, int button) {
  SetEvent(window, x, y, button);
  Fl::e_state &= ~StateBit(button);
  Fl::handle(FL_RELEASE, window);
}

void Interface::ClickAt(Fl_Window* window, int x, int y, int button) {
  Press(window, x, y, button);
  Release(window, x, y, button);
}

void Interface::Click(Fl_Widget* widget, int button) {
  if (auto* window = dynamic_cast<Fl_Window*>(widget)) {
    ClickAt(window, window->w() / 2, window->h() / 2, button);
    return;
  }
  ClickAt(widget->window(), widget->x() + widget->w() / 2, widget->y() + widget->h() / 2, button);
}

void Interface::Drag(Fl_Window* window, int fromX, int fromY, int toX, int toY, int button) {
  Press(window, fromX, fromY, button);
  DragTo(window, toX, toY, button);
  Release(window, toX, toY, button);
}

int Interface::Shortcut(Fl_Widget* view, int key) {
  Fl::e_keysym = key;
  return view->handle(FL_SHORTCUT);
}

void Interface::Menu(const char* path) {
  const Fl_Menu_Item* item = mainUI->menuBar->find_item(path);
  ASSERT_NE(item, nullptr) << path;
  item->do_callback(mainUI->menuBar);
}

void Interface::Slide(Fl_Widget* valuator, double value) {
  auto* widget = dynamic_cast<Fl_Valuator*>(valuator);
  ASSERT_NE(widget, nullptr);
  widget->value(value);
  Fl::e_keysym = FL_Button + 1;
  widget->do_callback();
}

void Interface::Choose(Fl_Widget* choice, int index) {
  auto* widget = dynamic_cast<Fl_Choice*>(choice);
  ASSERT_NE(widget, nullptr);
  widget->value(index);
  Fl::e_keysym = FL_Button + 1;
  widget->do_callback();
}

Fl_Widget* Interface::ButtonByLabel(Fl_Group* window, const char* label) {
  for (int i = 0; i < window->children(); ++i) {
    Fl_Widget* child = window->child(i);
    if (dynamic_cast<Fl_Button*>(child) != nullptr && child->label() != nullptr &&
        std::strcmp(child->label(), label) == 0) {
      return child;
    }
    if (auto* group = dynamic_cast<Fl_Group*>(child)) {
      if (Fl_Widget* found = ButtonByLabel(group, label)) { return found; }
    }
  }
  return nullptr;
}

std::vector<Pixel> Interface::PixelsOf(Fl_Gl_Window* view) {
  Settle();
  view->redraw();
  Fl::flush();
  view->make_current();
  // Through a virtual call of the toolkit's own, since draw() may be protected in a view.
  struct Access : Fl_Gl_Window {
    using Fl_Gl_Window::draw;
  };
  (view->*(&Access::draw))();
  glFinish();
  const int w = view->w();
  const int h = view->h();
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(w) * h * 3);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, w, h, GL_RGB, GL_UNSIGNED_BYTE, bytes.data());
  std::vector<Pixel> pixels(static_cast<std::size_t>(w) * h);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    pixels[i] = {bytes[3 * i], bytes[3 * i + 1], bytes[3 * i + 2]};
  }
  return pixels;
}

Pixel Interface::PixelOf(Fl_Gl_Window* view, int x, int y) {
  return PixelsOf(view)[static_cast<std::size_t>(y) * view->w() + x];
}

std::string Interface::Scratch() {
  namespace fs = std::filesystem;
  const testing::TestInfo* info = testing::UnitTest::GetInstance()->current_test_info();
  const fs::path folder = fs::path(testing::TempDir()) / "tolvex-tests" /
                          (std::string(info->test_suite_name()) + "." + info->name());
  fs::remove_all(folder);
  fs::create_directories(folder);
  return folder.string();
}
