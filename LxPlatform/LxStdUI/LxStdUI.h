#pragma once
// Umbrella header of the standard UI library.
#include <LxStdUI/FontToken.h>
#include <LxStdUI/ILLineChartCallBack.h>
#include <LxStdUI/LDialog.h>
#include <LxStdUI/LFlowLayout.h>
#include <LxStdUI/LLineChart.h>
#include <LxStdUI/LStyleSheetStyleHelper.h>
#include <LxStdUI/LTabBarBase.h>
#include <LxStdUI/LWidgetUtil.h>
#include <LxStdUI/MultiLang.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/SvgIconRenderer.h>
#include <LxStdUI/ThemeManager.h>
