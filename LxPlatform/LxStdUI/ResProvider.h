#pragma once
// lx_ui_res::Provider: theme-aware resources by name.
//
// Colours: tokens ("ct_text_link", "ck_blue300_50", ...) with a Light and a Dark value each; "ct_"
// tokens follow the theme, "ck_" keys are fixed palette entries (the same in both themes).
// Pixmaps and movies: a path (file or ":/" resource); in the Dark theme a sibling named
// "<base>_dark.<ext>" is preferred when it exists. SVG files become pixmaps at their default size.
// Results are cached per theme; a theme change drops the cache.
//
// TResource<T> holds one named resource and resolves it again after a theme change (lazily, on
// the next get()), so thousands of holders cost nothing until they are read.

#include <LxStdUI/LxStdUIExport.h>
#include <LxStdUI/ThemeManager.h>

#include <QColor>
#include <QHash>
#include <QMovie>
#include <QPixmap>
#include <QString>

#include <memory>

namespace lx_ui_res {

// A colour as CSS text ("#1f6feb", "rgba(31,111,235,0.5)"), ready for style sheets and HTML.
class LXSTDUI_EXPORT ColorString {
public:
    ColorString() = default;
    explicit ColorString(const QString& str) : m_str(str) {}
    const QString& str() const { return m_str; }
    bool isEmpty() const { return m_str.isEmpty(); }

private:
    QString m_str;
};

class LXSTDUI_EXPORT Provider {
public:
    static Provider* instance();

    // Each answers false (and leaves `out` empty) when there is no such resource.
    bool get(std::shared_ptr<const QColor>& out, const QString& key);
    bool get(std::shared_ptr<const ColorString>& out, const QString& key);
    bool get(std::shared_ptr<const QPixmap>& out, const QString& path);
    // Movies are shared by everyone who asks for the same path in one theme; callers must not
    // delete, re-parent or seek them.
    bool get(std::shared_ptr<QMovie>& out, const QString& path);
    bool get(std::shared_ptr<const QMovie>& out, const QString& path);

    // Convenience: invalid colour / empty string when unknown.
    QColor color(const QString& key);
    QString colorString(const QString& key);
    bool hasColor(const QString& key) const;

    // Hosts may add or override tokens. Both values are CSS colour texts.
    void registerColor(const QString& key, const QString& light, const QString& dark);

    // Path actually used for the current theme (dark variant when present).
    QString themedPath(const QString& path) const;

private:
    Provider();
    void DropCacheIfThemeChanged();

    struct ColorDef {
        QString light;
        QString dark;
    };
    QHash<QString, ColorDef> m_mapColors;
    quint64 m_u64Generation = 0;
    QHash<QString, std::shared_ptr<const QColor>> m_cacheColor;
    QHash<QString, std::shared_ptr<const ColorString>> m_cacheColorString;
    QHash<QString, std::shared_ptr<const QPixmap>> m_cachePixmap;
    QHash<QString, std::shared_ptr<QMovie>> m_cacheMovie;
};

// Parses CSS colour text as the provider writes it ("#rgb", "#rrggbb", "#aarrggbb", "rgba(r,g,b,a)").
LXSTDUI_EXPORT QColor ParseColor(const QString& css);

template <typename T>
class TResource {
public:
    TResource() = default;
    explicit TResource(const QString& key) : m_strKey(key) {}

    void setKey(const QString& key) {
        m_strKey = key;
        m_u64Generation = 0;
    }
    const QString& key() const { return m_strKey; }

    // Current value for the current theme; null when the provider has none.
    std::shared_ptr<const T> get() const {
        const quint64 gen = lx_ui_theme::Manager::instance()->themeGeneration();
        if (gen != m_u64Generation) {
            m_pValue.reset();
            Provider::instance()->get(m_pValue, m_strKey);
            m_u64Generation = gen;
        }
        return m_pValue;
    }

private:
    QString m_strKey;
    mutable std::shared_ptr<const T> m_pValue;
    mutable quint64 m_u64Generation = 0;
};

}  // namespace lx_ui_res
