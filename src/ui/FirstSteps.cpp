#include "ui/FirstSteps.h"

#include "ui/MainUI.h"

#include <FL/Fl_Output.H>
#include <FL/Fl_Window.H>

// The spelling is the product's own: do not correct it.
const char kFirstSteps[] =
    "Welcome on TOLVEX version 1.0\n"
    "\n"
    "1.Load images\n"
    "There are 2 ways to load images with TOLVEX.\n"
    "\n"
    "*Manual Loading \n"
    " -File -> Load -> GreyRawFile\n"
    "You can open .raw and .gipl format\n"
    " -For each segmentation file do:\n"
    "   File -> Load -> SegRawFile\n"
    "\n"
    "*Automatic loading\n"
    " -File -> Create File\n"
    " -Load Original image\n"
    " -Load each segmentation\n"
    " -Select the number of users and the number of slice by user\n"
    " -Save the list\n"
    " -Load the script file by clicking on the \"Load\" button\n"
    " -Select the script file you have just created.\n"
    "Be carreful, the scriptfile accept only the .gipl images!\n"
    "\n"
    "2.Computing values\n"
    "\n"
    " You have just to click on the buttons.\n"
    "If you don't know the functionalities of a button you can make a right click on it.\n"
    "it display the help for this button\n"
    "\n"
    "3.Ouput Values\n"
    "\n"
    " All the values are printed on the screen\n"
    "Nevertheless, if you use the \"Compare Data\" button you can export all the values into a "
    "file.\n"
    "You can also create a file for the confusion matrix and the Histogram surface.\n";

void ShowFirstSteps(MainUI& ui) {
  ui.firstStepsOutput->value(kFirstSteps);
  ui.firstStepsWindow->show();
}
