#pragma once
// Types shared by the web image widgets and their users.

#include <LxUIKit/LxUIKitExport.h>
#include <QMetaType>
#include <QRect>
#include <QSize>

// Outcome of loading one picture (argument of LxWebImageWidget::ImageLoadStatusSignal).
enum class LxImageLoadStatus : int {
    None = 0,            // no load happened (consumers treat it as a programming error)
    Loading = 1,         // a load is under way
    DownloadFailed = 2,  // the download failed or its file is missing
    LoadFailed = 3,      // the file exists but cannot be decoded or shown
    Loaded = 4,          // the picture is shown
};
Q_DECLARE_METATYPE(LxImageLoadStatus)

// Which corners of a picture are rounded (with the x and y radii given beside the type).
enum class LxCornerRadiusType : int {
    None = 0,
    All = 1,
    Top = 2,     // top-left and top-right
    Bottom = 3,  // bottom-left and bottom-right
    Left = 4,    // top-left and bottom-left
    Right = 5,   // top-right and bottom-right
};

// Chooses the part of a picture to show. Called with the picture's size in pixels (for SVG, its
// intrinsic size); an invalid rectangle (left > right or top > bottom) shows the whole picture.
class LXUIKIT_EXPORT ILxWebImageCropper {
public:
    virtual ~ILxWebImageCropper() = default;
    virtual QRect GetCropRect(const QSize& pixmapSize) = 0;
};
