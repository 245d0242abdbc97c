#pragma once
// CLxCenterAspectCropper: the largest centred part of a picture with a given aspect ratio (1:1 for
// avatars cut from any photo, 16:9 for cover strips ...).

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/LxWebImageDefine.h>

class LXUIKIT_EXPORT CLxCenterAspectCropper : public ILxWebImageCropper {
public:
    // width : height; non-positive values give an invalid rectangle (no crop).
    CLxCenterAspectCropper(double dWidth, double dHeight) : m_dWidth(dWidth), m_dHeight(dHeight) {}
    QRect GetCropRect(const QSize& pixmapSize) override;

private:
    double m_dWidth;
    double m_dHeight;
};
