#include "tests/driver/modules/module_control.h"

TModuleControl control;

extern "C" __attribute__((visibility("default"))) TModuleControl *TestControl() { return &control; }
