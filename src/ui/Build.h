// The builders of the windows, in the order in which they are called.
#pragma once

class MainUI;

void BuildMainWindow(MainUI& ui);
void BuildToolGroup(MainUI& ui);
void BuildMenuBar(MainUI& ui);
void BuildViewsGroup(MainUI& ui);
void BuildCentreGroup(MainUI& ui);
void BuildMeasuresGroup(MainUI& ui);
void BuildProgressPanel(MainUI& ui);

void BuildLoadGreyWindow(MainUI& ui);
void BuildLoadSegWindow(MainUI& ui);
void BuildSaveSegWindow(MainUI& ui);
void BuildCompareWindow(MainUI& ui);
void BuildResultsWindow(MainUI& ui);
void BuildPlotWindow(MainUI& ui);
void BuildCreateListWindow(MainUI& ui);
void BuildOptionsWindow(MainUI& ui);
void BuildHelpWindow(MainUI& ui);
void BuildAboutWindow(MainUI& ui);
void BuildFirstStepsWindow(MainUI& ui);
