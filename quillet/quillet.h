#pragma once

// Everything that an application needs, the toolkit included.
#include <UIlib.h>

#include "quillet/Export.h"
#include "quillet/controls/RoundedRectButton.h"
#include "quillet/controls/ToggleSwitch.h"
#include "quillet/dialogs/CommonLoadingWindow.h"
#include "quillet/dialogs/ConfirmationWindow.h"
#include "quillet/dialogs/IMessageBox.h"
#include "quillet/dialogs/InfoBox.h"
#include "quillet/dialogs/LoadingWindow.h"
#include "quillet/dialogs/MessageBox.h"
#include "quillet/dialogs/PromptWnd.h"
#include "quillet/dialogs/ShowFileInFolder.h"
#include "quillet/dialogs/ViewContacts.h"
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
