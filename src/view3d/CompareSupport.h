// What the batch over image pairs and its histogram share.
#pragma once

#include <string>

class MainUI;
class VoxData;
class Window3D;

/// Whether every queued pair can be measured; says why not.
bool CanCompareQueue(const MainUI& ui);

/// One word and numbers of the console, without a blank between them.
void PrintWord(const std::string& line);

/// Says in the status and on the error stream that a file could not be written.
void ReportUnwritten(const MainUI& ui, const std::string& name);

/// The two names of pair `index` into its record, from the entries of the chooser "Image1".
void NamePair(Window3D& view, int index);
