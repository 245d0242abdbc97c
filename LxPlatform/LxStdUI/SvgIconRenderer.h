#pragma once
// lx_ui_res::SvgIconRenderer: an SVG icon named by a path, drawn at any size and in a widget
// state, following the theme.
//
// Paths: absolute files and ":/" resources are used as they are; a relative path is looked up
// under the search roots (added roots first, then ":/", ":/lxstdui/" and the application's
// folder); a library with icons of its own adds its resource root at start-up. In the Dark theme "<base>_dark.svg" is
// preferred when it exists. States other than Normal use "<base>_hover.svg", "<base>_pressed.svg" or
// "<base>_disabled.svg" when present; a missing disabled variant is drawn from the normal one at 40% opacity.
//
// get() caches one renderer per path for the current theme; a theme change drops the cache, so
// the next get() answers the other theme's picture.

#include <LxStdUI/LxStdUIExport.h>
#include <QPixmap>
#include <QRectF>
#include <QString>

#include <memory>

class QPainter;
class QSvgRenderer;

namespace lx_ui_res {

class LXSTDUI_EXPORT SvgIconRenderer {
public:
    enum State { Normal = 0, Hover = 1, Pressed = 2, Disabled = 3 };

    // Null when the path names no readable SVG.
    static std::shared_ptr<const SvgIconRenderer> get(const QString& path);
    static void addSearchRoot(const QString& root);
    // The file a path stands for in the current theme; empty when there is none.
    static QString resolvePath(const QString& path);

    ~SvgIconRenderer();
    QString filePath() const { return m_strFile; }
    QSizeF defaultSize() const;
    void render(QPainter* pPainter, const QRectF& rect, State state = Normal) const;
    QPixmap pixmap(const QSize& size, qreal dpr = 1.0, State state = Normal) const;

private:
    explicit SvgIconRenderer(const QString& file);
    QSvgRenderer* RendererFor(State state) const;

    QString m_strFile;
    mutable std::unique_ptr<QSvgRenderer> m_pRenderers[4];
    mutable bool m_bLooked[4] = {false, false, false, false};
};

}  // namespace lx_ui_res
