#include "app/Globals.h"

ViewState* viewState = nullptr;
ViewState* referenceState = nullptr;
MainUI* mainUI = nullptr;
