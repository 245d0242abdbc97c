#include <LxStdUI/SvgIconRenderer.h>

#include <LxStdUI/LxStdUILog_p.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>

namespace lx_ui_res {
namespace {

QStringList& Roots() {
    static QStringList s_roots;
    return s_roots;
}

struct Cache {
    quint64 u64Generation = 0;
    QHash<QString, std::shared_ptr<const SvgIconRenderer>> map;
};
Cache& TheCache() {
    static Cache s_cache;
    return s_cache;
}

QString Variant(const QString& file, const char* suffix) {
    const QFileInfo fi(file);
    const QString dir = file.left(file.size() - fi.fileName().size());
    return dir + fi.completeBaseName() + QLatin1String(suffix) + QLatin1Char('.') + fi.suffix();
}

}  // namespace

void SvgIconRenderer::addSearchRoot(const QString& root) {
    if (!Roots().contains(root))
        Roots().append(root);
}

QString SvgIconRenderer::resolvePath(const QString& path) {
    if (path.isEmpty())
        return QString();
    QString found;
    if (path.startsWith(QLatin1Char(':')) || QDir::isAbsolutePath(path)) {
        if (QFileInfo::exists(path))
            found = path;
    } else {
        QStringList roots = Roots();
        roots << QStringLiteral(":/") << QStringLiteral(":/lxstdui/");
        if (QCoreApplication::instance())
            roots << QCoreApplication::applicationDirPath() + QLatin1Char('/');
        for (QString root : qAsConst(roots)) {
            if (!root.endsWith(QLatin1Char('/')))
                root += QLatin1Char('/');
            if (QFileInfo::exists(root + path)) {
                found = root + path;
                break;
            }
        }
    }
    return found.isEmpty() ? QString() : Provider::instance()->themedPath(found);
}

std::shared_ptr<const SvgIconRenderer> SvgIconRenderer::get(const QString& path) {
    Cache& cache = TheCache();
    const quint64 gen = lx_ui_theme::Manager::instance()->themeGeneration();
    if (cache.u64Generation != gen) {
        cache.map.clear();
        cache.u64Generation = gen;
    }
    auto it = cache.map.constFind(path);
    if (it != cache.map.constEnd())
        return it.value();
    std::shared_ptr<const SvgIconRenderer> result;
    const QString file = resolvePath(path);
    if (!file.isEmpty()) {
        std::shared_ptr<SvgIconRenderer> r(new SvgIconRenderer(file));
        if (r->RendererFor(Normal))
            result = r;
    }
    if (!result)
        LXSTDUI_LOG_WARN("svg icon {} cannot be read", path);
    cache.map.insert(path, result);  // misses are remembered too, until the theme changes
    return result;
}

SvgIconRenderer::SvgIconRenderer(const QString& file) : m_strFile(file) {}
SvgIconRenderer::~SvgIconRenderer() = default;

QSvgRenderer* SvgIconRenderer::RendererFor(State state) const {
    const int i = int(state);
    if (!m_bLooked[i]) {
        m_bLooked[i] = true;
        static const char* const kSuffix[] = {"", "_hover", "_pressed", "_disabled"};
        const QString file = state == Normal ? m_strFile : Variant(m_strFile, kSuffix[i]);
        if (state == Normal || QFileInfo::exists(file)) {
            auto r = std::make_unique<QSvgRenderer>(file);
            if (r->isValid())
                m_pRenderers[i] = std::move(r);
        }
    }
    return m_pRenderers[i].get();
}

QSizeF SvgIconRenderer::defaultSize() const {
    QSvgRenderer* r = RendererFor(Normal);
    return r ? QSizeF(r->defaultSize()) : QSizeF();
}

void SvgIconRenderer::render(QPainter* pPainter, const QRectF& rect, State state) const {
    if (!pPainter)
        return;
    QSvgRenderer* r = RendererFor(state);
    const bool bFade = !r && state == Disabled;
    if (!r)
        r = RendererFor(Normal);
    if (!r)
        return;
    if (bFade) {
        pPainter->save();
        pPainter->setOpacity(pPainter->opacity() * 0.4);
        r->render(pPainter, rect);
        pPainter->restore();
    } else {
        r->render(pPainter, rect);
    }
}

QPixmap SvgIconRenderer::pixmap(const QSize& size, qreal dpr, State state) const {
    QPixmap pm(size * dpr);
    pm.setDevicePixelRatio(dpr);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    render(&p, QRectF(QPointF(0, 0), QSizeF(size)), state);
    return pm;
}

}  // namespace lx_ui_res
