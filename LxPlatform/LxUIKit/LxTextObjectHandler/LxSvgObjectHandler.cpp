#include <LxUIKit/LxTextObjectHandler/LxSvgObjectHandler.h>

#include <LxStdUI/SvgIconRenderer.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QDir>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextImageFormat>
#include <QUrl>

namespace {
constexpr int kMaxCachedRenderers = 64;
}

CLxSvgObjectHandler::CLxSvgObjectHandler(QObject* pParent) : CLxTextObjectHandlerBase(pParent) {}
CLxSvgObjectHandler::~CLxSvgObjectHandler() = default;

QSizeF CLxSvgObjectHandler::intrinsicSize(QTextDocument*, int, const QTextFormat& format) {
    const QTextImageFormat imageFormat = format.toImageFormat();
    if (!LXUIKIT_ASSERT(imageFormat.width() > 0 && imageFormat.height() > 0))
        return QSizeF();
    return QSizeF(imageFormat.width(), imageFormat.height());
}

QSvgRenderer* CLxSvgObjectHandler::Renderer(const QString& strKey, const QByteArray& data, bool bIsFile) {
    auto it = m_mapRenderers.constFind(strKey);
    if (it != m_mapRenderers.constEnd())
        return it.value().get();
    if (m_mapRenderers.size() >= kMaxCachedRenderers)
        m_mapRenderers.clear();
    auto renderer = bIsFile ? std::make_shared<QSvgRenderer>(strKey) : std::make_shared<QSvgRenderer>(data);
    if (!renderer->isValid()) {
        LXUIKIT_LOG_WARN("svg object {} cannot be drawn", bIsFile ? strKey : strKey.left(48));
        renderer.reset();
    }
    m_mapRenderers.insert(strKey, renderer);
    return renderer.get();
}

void CLxSvgObjectHandler::drawObject(QPainter* painter, const QRectF& rect, QTextDocument*, int,
                                     const QTextFormat& format) {
    const QString imageUrl = format.stringProperty(QTextFormat::ImageName);
    if (!LXUIKIT_ASSERT(!imageUrl.isEmpty()) || !painter)
        return;
    if (imageUrl.startsWith(QLatin1String("data:image/"))) {
        const int comma = imageUrl.indexOf(QLatin1Char(','));
        if (comma < 0)
            return;
        // "data:image/svg+xml;base64,<payload>"; a payload without ";base64" is percent-encoded text.
        QByteArray svg;
        if (!m_mapRenderers.contains(imageUrl)) {
            const QByteArray payload = imageUrl.mid(comma + 1).toLatin1();
            svg = imageUrl.leftRef(comma).endsWith(QLatin1String(";base64")) ? QByteArray::fromBase64(payload)
                                                                             : QByteArray::fromPercentEncoding(payload);
        }
        QSvgRenderer* r = Renderer(imageUrl, svg, false);
        if (r)
            r->render(painter, rect);
        return;
    }
    if (QDir::isRelativePath(imageUrl) && !imageUrl.startsWith(QLatin1Char(':'))) {
        if (auto icon = lx_ui_res::SvgIconRenderer::get(imageUrl))
            icon->render(painter, rect, lx_ui_res::SvgIconRenderer::Normal);
        return;
    }
    const QUrl url(imageUrl);
    const QString file = url.isLocalFile() ? url.toLocalFile() : imageUrl;
    if (QSvgRenderer* r = Renderer(file, QByteArray(), true))
        r->render(painter, rect);
}
