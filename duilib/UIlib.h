#pragma once

// The whole toolkit. Applications include only this.

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include <map>
#include <vector>

namespace DuiLib {
class CControlUI;
class CPaintManagerUI;
} // namespace DuiLib

#include "Utils/Utils.h"

#include "Utils/DPI.h"
#include "Utils/UIAnimation.h"
#include "Utils/UIDelegate.h"

#include "Core/UIDefine.h"
#include "Core/UIInterfaces.h"
#include "Core/UIRecords.h"

#include "Core/ControlFactory.h"
#include "Core/UIBase.h"
#include "Core/UIMarkup.h"
#include "Core/UIRender.h"
#include "Core/UIResourceManager.h"

#include "Core/UIDlgBuilder.h"
#include "Core/UIManager.h"

#include "Core/UIControl.h"

#include "Core/UIContainer.h"

#include "Layout/UIChildLayout.h"
#include "Layout/UIHorizontalLayout.h"
#include "Layout/UITabLayout.h"
#include "Layout/UITileLayout.h"
#include "Layout/UIVerticalLayout.h"

#include "Control/UIButton.h"
#include "Control/UICheckBox.h"
#include "Control/UICombo.h"
#include "Control/UIEdit.h"
#include "Control/UILabel.h"
#include "Control/UIList.h"
#include "Control/UIListElement.h"
#include "Control/UIListHeader.h"
#include "Control/UIMenu.h"
#include "Control/UIOption.h"
#include "Control/UIProgress.h"
#include "Control/UIScrollBar.h"
#include "Control/UIShadow.h"
#include "Control/UISlider.h"
#include "Control/UIText.h"
#include "Control/UITrayIcon.h"
#include "Control/UITreeView.h"

#include "Utils/WinImplBase.h"
