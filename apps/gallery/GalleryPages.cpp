#include "GalleryPages.h"

const std::vector<GalleryPage>& AllGalleryPages() {
    static const std::vector<GalleryPage> s_pages = {
        {QStringLiteral("toasts"), QStringLiteral("Toasts"), &CreateToastPage, &DemoToastPage},
        {QStringLiteral("lazyload"), QStringLiteral("Lazy load"), &CreateLazyLoadPage, {}},
        {QStringLiteral("archive"), QStringLiteral("Archive"), &CreateArchivePage, &DemoArchivePage},
        {QStringLiteral("richtext"), QStringLiteral("Rich text"), &CreateRichTextPage, &DemoRichTextPage},
        {QStringLiteral("webimages"), QStringLiteral("Web images"), &CreateWebImagesPage, &DemoWebImagesPage},
    };
    return s_pages;
}
