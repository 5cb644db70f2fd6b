#include "tests/support/LastActions.h"

#include "tests/support/Checksums.h"

#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

constexpr int kKept = 20;
constexpr int kLine = 200;

char lines[kKept][kLine];
char heading[kLine];
int noted = 0;
Crc32 sum;
int terminal = STDERR_FILENO;
bool limited = false;

void Put(const char* text) {
  const ssize_t written = write(terminal, text, std::strlen(text));
  static_cast<void>(written);  // there is nobody left to tell
}

void OnExit() {
  if (!limited) { return; }
  Put("\nAn action ends the process.\n");
  last_actions::Write();
}

extern "C" void OnSignal(int signal) {
  Put(signal == SIGALRM ? "\nAn action hangs.\n" : "\nThe program has crashed.\n");
  last_actions::Write();
  std::signal(signal, SIG_DFL);
  if (signal == SIGALRM) { _exit(1); }
  raise(signal);
}

}  // namespace

namespace last_actions {

void Watch(const char* title) {
  terminal = dup(STDERR_FILENO);
  std::snprintf(heading, sizeof heading, "%s\n", title);
  std::signal(SIGALRM, OnSignal);
  std::atexit(OnExit);
#ifdef __SANITIZE_ADDRESS__
  __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<std::intptr_t>(terminal)));
  __sanitizer_set_death_callback(Write);
#else
  for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
    std::signal(signal, OnSignal);
  }
#endif
}

void Limit(unsigned seconds) {
  limited = seconds > 0;
  alarm(seconds);
}

void Note(const char* format, ...) {
  char* line = lines[noted % kKept];
  std::va_list values;
  va_start(values, format);
  std::vsnprintf(line, kLine - 1, format, values);
  va_end(values);
  std::strcat(line, "\n");
  sum.Add(line, std::strlen(line));
  ++noted;
}

unsigned Checksum() { return sum.Value(); }

void Write() {
  Put(heading);
  for (int i = noted < kKept ? 0 : noted - kKept; i < noted; ++i) { Put(lines[i % kKept]); }
}

}  // namespace last_actions
