#pragma once
// Umbrella header of the standard UI library.
#include <LxStdUI/FontToken.h>
#include <LxStdUI/LDialog.h>
#include <LxStdUI/LFrameLessWnd.h>
#include <LxStdUI/LIconButton.h>
#include <LxStdUI/LIconResource.h>
#include <LxStdUI/LWidgetUtil.h>
#include <LxStdUI/MultiLang.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/SvgIconRenderer.h>
#include <LxStdUI/ThemeManager.h>
