#pragma once

#include "configurator/kq_pdt.h"
#include "tools/print/json_text.h"

/// The parts of a session's state that lie on tab 1; null while it isn't active.
TJson SheetState(CConfiguratorWindow &window);
TJson ChannelsState(CConfiguratorWindow &window);
/// The open cell editor; null without one.
TJson EditorState(CConfiguratorWindow &window);
