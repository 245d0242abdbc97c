#pragma once
// CLxEmotionObjectHandler: draws emoticon images inline. Built on Qt's image handler (a private Qt
// class, hence this header is not installed; hosts create the handler through
// LxEmotionObjectHandler.h).
//
// Sizes: the image format's width and height; a missing one is taken from the picture, keeping its
// aspect ratio. Drawing: the picture is loaded for the painter's device pixel ratio ("name@2x.ext"
// preferred above ratio 1), scaled smoothly to the target size and drawn antialiased.
//
// Loading follows Qt's own image handler: the name is looked up as a document resource first
// (what the host added with addResource, or what the document's loadResource finds), then as a
// file or ":/" resource; a picture loaded from bytes or a file is kept in the document as a
// resource, so each document decodes it once. Scaled copies are cached process-wide per pixel data
// and size. Choices of ours: a name that gives no picture draws nothing and takes no room (Qt
// draws a generic file icon instead), and the pixel ratio of a "@Nx" file is set only when that
// file was found for a high-density target.

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
    // `doc` may be null: the file is then loaded and nothing is cached.
    static QPixmap getPixmap(QTextDocument* doc, const QTextImageFormat& format, double devicePixelRatio = 1.0);
};
