#include <LxStdUI/ResProvider.h>

#include <LxStdUI/LxStdUILog_p.h>

#include <QFileInfo>
#include <QImageReader>
#include <QRegularExpression>

namespace lx_ui_res {
namespace {

struct Token {
    const char* key;
    const char* light;
    const char* dark;
};

// The theme's colour tokens. Light values sit on white, Dark values on #16181d.
const Token kTokens[] = {
    // text
    {"ct_text_h1", "#1a1d23", "#e8eaed"},
    {"ct_text_h2", "#4a505c", "#b4b9c2"},
    {"ct_text_h3", "#8a909c", "#7d838f"},
    {"ct_text_link", "#1f6feb", "#5c9dff"},
    {"ct_text_highlight", "#f5a623", "#ffc24d"},
    {"ct_text_green", "#14a05c", "#2ecc7a"},
    {"ct_text_red", "#e0383e", "#ff5c61"},
    {"ct_text_white", "#ffffff", "#ffffff"},
    // backgrounds and lines
    {"ct_bg_primary", "#ffffff", "#16181d"},
    {"ct_bg_secondary", "#f4f5f7", "#1f2228"},
    {"ct_bg_tertiary", "#e9ebef", "#2a2e36"},
    {"ct_bg_blue", "#e8f1ff", "#1b2a44"},
    {"ct_bg_hover", "#eef0f3", "#262a31"},
    {"ct_bg_mask", "rgba(0,0,0,0.45)", "rgba(0,0,0,0.6)"},
    {"ct_line_separator", "#e3e5e9", "#2c3038"},
    {"ct_border", "#d5d8de", "#3a3f48"},
    {"ct_lime", "#7ccb14", "#9be33a"},
    {"ct_button_primary", "#1f6feb", "#2f7bf0"},
    {"ct_toast_bg", "#333333", "#333333"},
    // fixed palette keys
    {"ck_blue300_50", "rgba(100,160,255,0.5)", "rgba(100,160,255,0.5)"},
    {"ck_gray940", "#1e1f22", "#1e1f22"},
    {"ck_white", "#ffffff", "#ffffff"},
    {"ck_black", "#000000", "#000000"},
};

bool IsDark() { return lx_ui_theme::Manager::instance()->isDark(); }

}  // namespace

QColor ParseColor(const QString& css) {
    const QString t = css.trimmed();
    static const QRegularExpression rgba(
        QStringLiteral("^rgba?\\(\\s*(\\d+)\\s*,\\s*(\\d+)\\s*,\\s*(\\d+)\\s*(?:,\\s*([0-9.]+)\\s*)?\\)$"));
    const QRegularExpressionMatch m = rgba.match(t);
    if (m.hasMatch()) {
        QColor c(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
        if (!m.captured(4).isEmpty())
            c.setAlphaF(qBound(0.0, m.captured(4).toDouble(), 1.0));
        return c;
    }
    return QColor(t);  // "#rgb", "#rrggbb", "#aarrggbb", names; invalid otherwise
}

Provider* Provider::instance() {
    static Provider* s = new Provider;
    return s;
}

Provider::Provider() {
    for (const Token& t : kTokens)
        m_mapColors.insert(QLatin1String(t.key), ColorDef{QLatin1String(t.light), QLatin1String(t.dark)});
}

void Provider::DropCacheIfThemeChanged() {
    const quint64 gen = lx_ui_theme::Manager::instance()->themeGeneration();
    if (gen == m_u64Generation)
        return;
    m_u64Generation = gen;
    m_cacheColor.clear();
    m_cacheColorString.clear();
    m_cachePixmap.clear();
    m_cacheMovie.clear();
}

bool Provider::hasColor(const QString& key) const { return m_mapColors.contains(key); }

void Provider::registerColor(const QString& key, const QString& light, const QString& dark) {
    m_mapColors.insert(key, ColorDef{light, dark});
    m_cacheColor.remove(key);
    m_cacheColorString.remove(key);
}

bool Provider::get(std::shared_ptr<const ColorString>& out, const QString& key) {
    DropCacheIfThemeChanged();
    auto it = m_cacheColorString.constFind(key);
    if (it != m_cacheColorString.constEnd()) {
        out = it.value();
        return true;
    }
    auto def = m_mapColors.constFind(key);
    if (def == m_mapColors.constEnd()) {
        out.reset();
        return false;
    }
    out = std::make_shared<const ColorString>(IsDark() ? def->dark : def->light);
    m_cacheColorString.insert(key, out);
    return true;
}

bool Provider::get(std::shared_ptr<const QColor>& out, const QString& key) {
    DropCacheIfThemeChanged();
    auto it = m_cacheColor.constFind(key);
    if (it != m_cacheColor.constEnd()) {
        out = it.value();
        return true;
    }
    std::shared_ptr<const ColorString> str;
    if (!get(str, key)) {
        out.reset();
        return false;
    }
    out = std::make_shared<const QColor>(ParseColor(str->str()));
    m_cacheColor.insert(key, out);
    return true;
}

QColor Provider::color(const QString& key) {
    std::shared_ptr<const QColor> c;
    return get(c, key) ? *c : QColor();
}

QString Provider::colorString(const QString& key) {
    std::shared_ptr<const ColorString> c;
    return get(c, key) ? c->str() : QString();
}

QString Provider::themedPath(const QString& path) const {
    if (path.isEmpty() || !IsDark())
        return path;
    const QFileInfo fi(path);
    const QString dir = path.left(path.size() - fi.fileName().size());
    const QString dark = dir + fi.completeBaseName() + QStringLiteral("_dark.") + fi.suffix();
    return QFileInfo::exists(dark) ? dark : path;
}

bool Provider::get(std::shared_ptr<const QPixmap>& out, const QString& path) {
    DropCacheIfThemeChanged();
    out.reset();
    if (path.isEmpty())
        return false;
    auto it = m_cachePixmap.constFind(path);
    if (it != m_cachePixmap.constEnd()) {
        out = it.value();
        return true;
    }
    const QString real = themedPath(path);
    QPixmap pm(real);
    if (pm.isNull()) {
        LXSTDUI_LOG_WARN("pixmap resource {} cannot be read", real);
        return false;
    }
    out = std::make_shared<const QPixmap>(pm);
    m_cachePixmap.insert(path, out);
    return true;
}

bool Provider::get(std::shared_ptr<QMovie>& out, const QString& path) {
    DropCacheIfThemeChanged();
    out.reset();
    if (path.isEmpty())
        return false;
    auto it = m_cacheMovie.constFind(path);
    if (it != m_cacheMovie.constEnd()) {
        out = it.value();
        return true;
    }
    auto movie = std::make_shared<QMovie>(themedPath(path));
    if (!movie->isValid()) {
        LXSTDUI_LOG_WARN("movie resource {} cannot be read", path);
        return false;
    }
    out = movie;
    m_cacheMovie.insert(path, out);
    return true;
}

bool Provider::get(std::shared_ptr<const QMovie>& out, const QString& path) {
    std::shared_ptr<QMovie> m;
    const bool ok = get(m, path);
    out = m;
    return ok;
}

}  // namespace lx_ui_res
