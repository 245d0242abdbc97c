#pragma once
// Umbrella header of the kit: everything a host needs.
#include <LxCore/LxCore.h>
#include <LxStdUI/LxStdUI.h>
#include <LxUIKit/DevTools/AutoTest/UIAutoTestManager.h>
#include <LxUIKit/DevTools/Log/LxLogViewer.h>
#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/LUIKitReport.h>
#include <LxUIKit/LUIKitWebDelegate.h>
#include <LxUIKit/LxGuiHelper.h>
#include <LxUIKit/LxLazyLoadWidget.h>
#include <LxUIKit/LxUIKitLifecycle.h>
#include <LxUIKit/WebImage/ILxUIKitHttpDownloadMgr.h>
#include <LxUIKit/WebImage/LWebImageReloadHelper.h>
#include <LxUIKit/WebImage/LxCenterAspectCropper.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>
#include <LxUIKit/Zip/LxZip.h>
