// The callbacks of the widgets that are no measure buttons.
#pragma once

class Fl_Widget;
class MainUI;

/// Writes `text` into the help window and shows or raises it.
void ShowHelp(MainUI& ui, const char* text);
/// Shows the plot window and draws both curves anew.
void ShowPlot(MainUI& ui);

void OnMoveTool(Fl_Widget* widget, void* data);
void OnCrosshairTool(Fl_Widget* widget, void* data);
void OnContrast(Fl_Widget* widget, void* data);
void OnBrightness(Fl_Widget* widget, void* data);
void OnLabelOpacity(Fl_Widget* widget, void* data);
void OnColorLabel(Fl_Widget* widget, void* data);
void OnSurface2Opacity(Fl_Widget* widget, void* data);
void OnSurface3Opacity(Fl_Widget* widget, void* data);
void OnColorLegend(Fl_Widget* widget, void* data);
void OnCursorSlider(Fl_Widget* widget, void* data);
void OnImageSlider(Fl_Widget* widget, void* data);
void OnResetView(Fl_Widget* widget, void* data);
void OnDirection(Fl_Widget* widget, void* data);
void OnOverlayOpacity(Fl_Widget* widget, void* data);

void OnMenuGreyFile(Fl_Widget* widget, void* data);
void OnMenuSegFile(Fl_Widget* widget, void* data);
void OnMenuScript(Fl_Widget* widget, void* data);
void OnMenuCreateFile(Fl_Widget* widget, void* data);
void OnMenuOptions(Fl_Widget* widget, void* data);
void OnMenuRefresh(Fl_Widget* widget, void* data);
void OnMenuQuit(Fl_Widget* widget, void* data);
void OnMenuFirstSteps(Fl_Widget* widget, void* data);
void OnMenuAbout(Fl_Widget* widget, void* data);
