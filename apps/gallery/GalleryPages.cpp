#include "GalleryPages.h"

#include <QCoreApplication>

QString GalleryPage::Title() const { return QCoreApplication::translate("GalleryPages", pszTitle); }

const std::vector<GalleryPage>& AllGalleryPages() {
    static const std::vector<GalleryPage> s_pages = {
        {QStringLiteral("toasts"), QT_TRANSLATE_NOOP("GalleryPages", "Toasts"), &CreateToastPage, &DemoToastPage},
        {QStringLiteral("lazyload"), QT_TRANSLATE_NOOP("GalleryPages", "Lazy load"), &CreateLazyLoadPage, {}},
        {QStringLiteral("archive"), QT_TRANSLATE_NOOP("GalleryPages", "Archive"), &CreateArchivePage, &DemoArchivePage},
        {QStringLiteral("richtext"), QT_TRANSLATE_NOOP("GalleryPages", "Rich text"), &CreateRichTextPage,
         &DemoRichTextPage},
        {QStringLiteral("webimages"), QT_TRANSLATE_NOOP("GalleryPages", "Web images"), &CreateWebImagesPage,
         &DemoWebImagesPage},
        {QStringLiteral("devtools"), QT_TRANSLATE_NOOP("GalleryPages", "Developer tools"), &CreateDevToolsPage,
         &DemoDevToolsPage},
        {QStringLiteral("diagnostics"), QT_TRANSLATE_NOOP("GalleryPages", "Diagnostics"), &CreateDiagnosticsPage,
         &DemoDiagnosticsPage},
        {QStringLiteral("inspector"), QT_TRANSLATE_NOOP("GalleryPages", "Inspector"), &CreateInspectorPage,
         &DemoInspectorPage},
        {QStringLiteral("layout"), QT_TRANSLATE_NOOP("GalleryPages", "Layouts"), &CreateLayoutPage, &DemoLayoutPage},
        {QStringLiteral("slideshow"), QT_TRANSLATE_NOOP("GalleryPages", "Slideshow"), &CreateSlideshowPage,
         &DemoSlideshowPage},
        {QStringLiteral("flyouts"), QT_TRANSLATE_NOOP("GalleryPages", "Flyouts"), &CreateFlyoutsPage, &DemoFlyoutsPage},
        {QStringLiteral("settings"), QT_TRANSLATE_NOOP("GalleryPages", "Settings"), &CreateSettingsPage, {}},
        {QStringLiteral("preview"), QT_TRANSLATE_NOOP("GalleryPages", "Image preview"), &CreateImagePreviewPage,
         &DemoImagePreviewPage},
    };
    return s_pages;
}
