#pragma once

// Everything that an application needs, the toolkit included.
#include <UIlib.h>

#include "quillet/Export.h"
#include "quillet/controls/RoundedRectButton.h"
#include "quillet/controls/ToggleSwitch.h"
#include "quillet/frame/Controller.h"
#include "quillet/frame/MainQueue.h"
#include "quillet/frame/QuilletGlobal.h"
#include "quillet/frame/Route.h"
#include "quillet/frame/Window.h"
#include "quillet/resources/QueryControlTextEx.h"
#include "quillet/resources/ResourceManagerEx.h"
#include "quillet/resources/ResourceManagerModeEx.h"
#include "quillet/resources/ResourceManagerTransEx.h"
#include "quillet/resources/Utils.h"
#include "quillet/window/WindowImplBaseEx.h"
