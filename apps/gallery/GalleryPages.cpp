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
        {QStringLiteral("preview"), QT_TRANSLATE_NOOP("GalleryPages", "Image preview"), &CreateImagePreviewPage,
         &DemoImagePreviewPage},
    };
    return s_pages;
}
