// The last things that a test did, told on the terminal when the program hangs or crashes.
#pragma once

/// Since the streams are captured in a window test, all of this writes to a copy of the error
/// stream that was taken before.
namespace last_actions {

/// Takes the copy and waits for a signal that ends the program. `title` is written above the list.
void Watch(const char* title);
/// The outermost action has to be over within `seconds`; 0: none is under way.
void Limit(unsigned seconds);
/// Appends a line with a printf format; a list of the last twenty is kept.
void Note(const char* format, ...) __attribute__((format(printf, 1, 2)));
/// A sum of all lines so far, by which two runs are found to be the same.
unsigned Checksum();
/// Writes the list.
void Write();

}  // namespace last_actions
