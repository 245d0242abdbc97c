#pragma once
// CLxEmotionObjectHandler: draws emoticon images inline. Built on Qt's image handler (a private Qt
// class, hence this header is not installed; hosts create the handler through
// LxEmotionObjectHandler.h).
//
// Sizes: the image format's width and height; a missing one is taken from the picture, keeping its
// aspect ratio. Drawing: the picture is loaded for the painter's device pixel ratio ("name@2x.ext"
// preferred above ratio 1), scaled smoothly to the target size and drawn antialiased.
//
// Pictures named by a file or ":/" resource are decoded once per process (QPixmapCache), scaled
// copies once per size, so a feed of a thousand posts with the same emoticons decodes each file
// once. Other names (data: URLs, resources added to a document) are looked up in the document as
// Qt does and cached there.

#include <QtGui/private/qtextimagehandler_p.h>
#include <QPixmap>
#include <QTextImageFormat>

class CLxEmotionObjectHandler : public QTextImageHandler {
    Q_OBJECT
public:
    explicit CLxEmotionObjectHandler(QObject* pParent = nullptr);

    QSizeF intrinsicSize(QTextDocument* doc, int posInDocument, const QTextFormat& format) override;
    void drawObject(QPainter* p, const QRectF& rect, QTextDocument* doc, int posInDocument,
                    const QTextFormat& format) override;

    // The picture of an image format at a device pixel ratio (its own ratio set for "@2x" files).
    // *pShared (optional) tells whether it came from the process-wide cache.
    static QPixmap getPixmap(QTextDocument* doc, const QTextImageFormat& format, double devicePixelRatio = 1.0,
                             bool* pShared = nullptr);
};
