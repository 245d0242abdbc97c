// LxUIKitGallery: a host application of the kit. It initialises the kit the way a real host does,
// installs real delegates and shows every component on its own page.
//
//   LxUIKitGallery [--page NAME] [--theme light|dark] [--lang zh|en] [--screenshot FILE] [--trace FILE]
//
// --screenshot renders the window (and any toast or dialog over it) to a PNG and exits; it works
// on the offscreen platform. --trace appends what happens on screen to FILE, one fact a line (see
// GalleryTrace.h): the way a script that drives the gallery with real input sees the result.

#include "GalleryDelegates.h"
#include "GalleryI18n.h"
#include "GalleryPages.h"
#include "GalleryTrace.h"
#include "GalleryWindow.h"

#include <LxCore/CoreInit.h>
#include <LxCore/Environment.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxGuiHelper.h>
#include <LxUIKit/LxUIKitLifecycle.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QPainter>
#include <QTimer>

#include <cstdio>

namespace {

// The window plus every other visible top-level widget (toasts, dialogs) at its place over it.
QImage RenderScreenshot(QWidget* window) {
    const qreal dpr = window->devicePixelRatioF();
    QImage img(window->size() * dpr, QImage::Format_ARGB32_Premultiplied);
    img.setDevicePixelRatio(dpr);
    img.fill(Qt::transparent);
    QPainter p(&img);
    window->render(&p);
    const QPoint origin = window->mapToGlobal(QPoint(0, 0));
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w == window || !w->isVisible() || w->windowType() == Qt::Desktop)
            continue;
        const QPoint at = w->mapToGlobal(QPoint(0, 0)) - origin;
        w->render(&p, at, QRegion(), QWidget::DrawChildren | QWidget::DrawWindowBackground);
    }
    p.end();
    return img;
}

}  // namespace

int main(int argc, char* argv[]) {
    // Before anything else, as a host must: the core gets the kit's archive and scheme functions.
    const core::CoreInitParam coreParam = gui::GetCoreInitParamVeryFirst();

    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("LxUIKitGallery"));
    QApplication::setApplicationVersion(QStringLiteral("0.1.0"));
    core::InitCore(coreParam);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("LxUIKit gallery"));
    parser.addHelpOption();
    const QCommandLineOption pageOpt(QStringLiteral("page"), QStringLiteral("Page to open."), QStringLiteral("NAME"));
    const QCommandLineOption shotOpt(QStringLiteral("screenshot"), QStringLiteral("Render to PNG and exit."),
                                     QStringLiteral("FILE"));
    const QCommandLineOption themeOpt(QStringLiteral("theme"), QStringLiteral("light or dark."),
                                      QStringLiteral("THEME"));
    const QCommandLineOption langOpt(QStringLiteral("lang"), QStringLiteral("zh or en."), QStringLiteral("LANG"));
    const QCommandLineOption listOpt(QStringLiteral("list-pages"), QStringLiteral("Print the page names and exit."));
    const QCommandLineOption traceOpt(QStringLiteral("trace"),
                                      QStringLiteral("Append one line per observable fact (windows, pages, clicks, "
                                                     "tool states) to FILE."),
                                      QStringLiteral("FILE"));
    parser.addOptions({pageOpt, shotOpt, themeOpt, langOpt, listOpt, traceOpt});
    parser.process(app);

    // The language first, so that the gallery's translator is the right one from the start.
    if (parser.value(langOpt).startsWith(QLatin1String("en"), Qt::CaseInsensitive))
        core::lang::SetLanguageId(core::lang::kLangEnUS);
    else if (parser.value(langOpt).startsWith(QLatin1String("zh"), Qt::CaseInsensitive))
        core::lang::SetLanguageId(core::lang::kLangZhCN);
    InstallGalleryTranslator();

    if (parser.isSet(listOpt)) {
        for (const GalleryPage& page : AllGalleryPages())
            std::printf("%s\t%s\n", qPrintable(page.strName), page.Title().toUtf8().constData());
        return 0;
    }
    if (parser.value(themeOpt).compare(QLatin1String("dark"), Qt::CaseInsensitive) == 0)
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);

    // Before any window exists, so that every window, page and button is seen from the start.
    if (parser.isSet(traceOpt) && !GalleryTrace::Start(parser.value(traceOpt)))
        return 2;
    InstallGalleryDelegates();
    lxuikit::Init_LxUiKit_AfterProcessStart_MainThread();

    GalleryWindow window;
    if (parser.isSet(pageOpt) && !window.OpenPage(parser.value(pageOpt))) {
        std::fprintf(stderr, "no page named \"%s\"; --list-pages shows them\n", qPrintable(parser.value(pageOpt)));
        return 2;
    }
    window.move(0, 0);
    window.show();
    lxuikit::Init_LxUiKit_AfterLoginWndShowed_MainThread();

    int rc = 0;
    if (parser.isSet(shotOpt)) {
        const QString file = parser.value(shotOpt);
        QTimer::singleShot(0, &window, [&window] { window.RunDemo(); });
        // Let demos, animations and deferred loads settle before rendering.
        QTimer::singleShot(1500, &window, [&window, file, &rc] {
            const QImage img = RenderScreenshot(&window);
            if (!img.save(file, "PNG")) {
                std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
                rc = 1;
            }
            QApplication::quit();
        });
        app.exec();
    } else {
        rc = app.exec();
    }
    lxuikit::Uninit_LxUiKit_OnProcessExit_MainThread();
    return rc;
}
