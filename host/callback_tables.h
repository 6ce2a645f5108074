// host/callback_tables.h — the tables of functions that go into every command.
#pragma once

#include "hostapi/callbacks.h"
#include "hostapi/smart_render.h"
#include "hostapi/suites/basic.h"

namespace host {

const PF_InteractCallbacks& interactCallbacks();
// Not const in the interface; nobody may write into it.
PF_UtilCallbacks* utilCallbacks();
SPBasicSuite* basicSuite();
PF_PreRenderCallbacks* preRenderCallbacks(bool withGuidMixIn);
PF_SmartRenderCallbacks* smartRenderCallbacks();
const PF_ANSICallbacks& mathCallbacks();

}  // namespace host
