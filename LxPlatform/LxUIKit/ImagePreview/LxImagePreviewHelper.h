#pragma once
// CLxImagePreviewHelper: how large the preview window and its picture are, relative to the screen
// under the mouse.
//
// Image area bounds: at least 28% of the screen's width and height (truncated), at most 86% of its
// width and 88% of its height. CalculateScaleResult sizes a first opening:
//   - a picture within the minimum area gets the minimum area and is enlarged, proportions kept,
//     until one side touches it (shown as it is when a side already equals the minimum);
//   - a picture between the bounds is shown at its size in an area that is at least the minimum;
//   - a larger picture is shrunk by its ratio of height to width into the maximum width or height,
//     the area no smaller than the minimum.
// GetImageScaleFactor fits a picture to an area that is already open (stepping through a list):
// the largest scale at which it fits, never above 1 (small pictures are not blown up).

#include <LxUIKit/LxUIKitExport.h>

#include <QSize>

class LXUIKIT_EXPORT CLxImagePreviewHelper {
public:
    struct ScaleResult {
        double dScale = 1.0;
        QSize imageArea;
    };

    static QSize GetMinImageArea(const QSize& screen);
    static QSize GetMaxImageArea(const QSize& screen);
    // The size of the screen that contains the mouse cursor (the primary screen when none does).
    static QSize GetScreenSizeUnderCursor();

    static ScaleResult CalculateScaleResult(const QSize& image, const QSize& minArea, const QSize& maxArea);
    static ScaleResult CalculateScaleResult(const QSize& image);  // bounds from the screen under the cursor
    static double GetImageScaleFactor(const QSize& image, const QSize& area);
};
