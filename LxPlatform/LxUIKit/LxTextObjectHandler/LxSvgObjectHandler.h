#pragma once
// CLxSvgObjectHandler: draws an SVG named by the image format's name into the object's rectangle.
// The name is a "data:image/svg+xml;base64,..." URL (decoded in memory, no file access), a relative
// path naming an icon of the widget library (lx_ui_res::SvgIconRenderer: searched under its roots,
// theme-aware, normal state) or a file. The size is the format's width and height, both required.
// Parsed pictures are kept per handler, so redrawing does not parse again.

#include <LxUIKit/LxTextObjectHandler/LxTextObjectHandlerBase.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QHash>

#include <memory>

class QSvgRenderer;

class LXUIKIT_EXPORT CLxSvgObjectHandler : public CLxTextObjectHandlerBase {
    Q_OBJECT
public:
    explicit CLxSvgObjectHandler(QObject* pParent = nullptr);
    ~CLxSvgObjectHandler() override;

    // Asserts "imageFormat.width() > 0 && imageFormat.height() > 0" (and takes no room then).
    QSizeF intrinsicSize(QTextDocument* doc, int posInDocument, const QTextFormat& format) override;
    // Asserts "!imageUrl.isEmpty()".
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* doc, int posInDocument,
                    const QTextFormat& format) override;

private:
    QSvgRenderer* Renderer(const QString& strKey, const QByteArray& data, bool bIsFile);

    QHash<QString, std::shared_ptr<QSvgRenderer>> m_mapRenderers;
};
