// What the buttons of the Compare Data window and "Confusion Matrix" do.
#pragma once

class MainUI;

void OnCompareCompute(MainUI& ui);
void OnCompareExport(MainUI& ui);
void OnCompareSurfaceHisto(MainUI& ui);       ///< the button
void OnCompareSurfaceHistoCheck(MainUI& ui);  ///< the check box
void OnCompareClear(MainUI& ui);
void OnConfusionMatrix(MainUI& ui);
