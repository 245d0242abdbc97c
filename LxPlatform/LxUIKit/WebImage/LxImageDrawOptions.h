#pragma once
// LxImageDrawOptions: how one picture is drawn in its widget. LxWebImageWidget keeps one and hands
// it to the widget that shows the picture; its placeholder is drawn with the same options.
//
// The steps, in order:
//   crop      pCropper chooses the part of the picture to show (an invalid rectangle: all of it);
//   scale     bScaleToWidget stretches the picture over the widget, aspect ratio ignored; otherwise
//             the picture is shown at its size times dScale, aspect ratio kept (a placeholder keeps
//             its own size: dScale does not apply to it);
//   corners   enCornerType rounds the corners it names with the radii dRadiusX and dRadiusY
//             (clamped to half the sides);
//   border    dBorderWidth logical pixels in the theme colour strBorderColorKey, drawn inside the
//             picture and following its rounded outline (nothing for an empty or unknown key).
// Pictures are prepared at the widget's device pixel ratio, which is the widget's, not an option.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/LxWebImageDefine.h>

#include <memory>
#include <string>

struct LXUIKIT_EXPORT LxImageDrawOptions {
    bool bScaleToWidget = false;
    double dScale = 1.0;
    std::shared_ptr<ILxWebImageCropper> pCropper;
    LxCornerRadiusType enCornerType = LxCornerRadiusType::None;
    double dRadiusX = 0.0;
    double dRadiusY = 0.0;
    std::string strBorderColorKey;
    double dBorderWidth = 0.0;

    // Copies with one step changed (what the named setters of the widgets pass on).
    LxImageDrawOptions WithScaleToWidget(bool bEnable) const {
        LxImageDrawOptions o = *this;
        o.bScaleToWidget = bEnable;
        return o;
    }
    LxImageDrawOptions WithScale(double dFactor) const {
        LxImageDrawOptions o = *this;
        o.dScale = dFactor;
        return o;
    }
    LxImageDrawOptions WithCropper(std::shared_ptr<ILxWebImageCropper> pNew) const {
        LxImageDrawOptions o = *this;
        o.pCropper = std::move(pNew);
        return o;
    }
    LxImageDrawOptions WithCorners(LxCornerRadiusType type, double dX, double dY) const {
        LxImageDrawOptions o = *this;
        o.enCornerType = type;
        o.dRadiusX = dX;
        o.dRadiusY = dY;
        return o;
    }
    LxImageDrawOptions WithBorder(const std::string& strColorKey, double dWidth) const {
        LxImageDrawOptions o = *this;
        o.strBorderColorKey = strColorKey;
        o.dBorderWidth = dWidth;
        return o;
    }
};
