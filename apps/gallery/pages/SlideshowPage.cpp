// Slideshow: a carousel of native slides (a painted pixmap, a still file, an animated WebP) and web
// slides loaded through the gallery's download delegate from file: URLs, one of which points to a
// missing file and fails after its retries (it never appears). A log lists the slideshow's signals
// with the indices they carry; slides with a link open it through the web view delegate.

#include "GalleryPages.h"

#include <LxCore/ProductPath.h>
#include <LxStdUI/LText.h>
#include <LxStdUI/LTitle.h>
#include <LxUIKit/LSlideshow.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QLinearGradient>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SlideshowPage)
};

QString SlidesDir() { return core::product_path::GetCacheDir() + QStringLiteral("/gallery_slideshow"); }

// A 600 x 200 banner with a gradient and a headline (invented companies only).
QPixmap Banner(const QColor& from, const QColor& to, const QString& headline, const QString& sub) {
    QPixmap pix(600, 200);
    QPainter p(&pix);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 600, 200);
    g.setColorAt(0, from);
    g.setColorAt(1, to);
    p.fillRect(pix.rect(), g);
    p.setPen(Qt::white);
    QFont f = p.font();
    f.setPixelSize(34);
    f.setBold(true);
    p.setFont(f);
    p.drawText(QRect(36, 50, 540, 50), Qt::AlignLeft | Qt::AlignVCenter, headline);
    f.setPixelSize(18);
    f.setBold(false);
    p.setFont(f);
    p.drawText(QRect(36, 110, 540, 40), Qt::AlignLeft | Qt::AlignVCenter, sub);
    return pix;
}

// Writes the web slides' files (once) and answers their file: URLs.
QString WebSlide(const QString& name, const QPixmap& pix) {
    QDir().mkpath(SlidesDir());
    const QString path = SlidesDir() + QLatin1Char('/') + name;
    if (!QFile::exists(path))
        pix.save(path, "PNG");
    return QUrl::fromLocalFile(path).toString();
}

QString CopySample(const QString& name) {
    QDir().mkpath(SlidesDir());
    const QString path = SlidesDir() + QLatin1Char('/') + name;
    if (!QFile::exists(path))
        QFile::copy(QStringLiteral(":/gallery_samples/") + name, path);
    return path;
}

}  // namespace

QWidget* CreateSlideshowPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* root = new QVBoxLayout(page);
    auto* title = new LTitle(page);
    title->setTitleStyle(1);
    title->setText(Texts::tr("Slideshow"));
    root->addWidget(title);
    auto* hint = new LText(Texts::tr("Native slides and web slides; the last web slide points to a missing file and "
                                     "stays hidden after its retries. Drag or click the dots to page."),
                           page);
    hint->setTextStyle(6);
    hint->setWordWrap(true);
    root->addWidget(hint);

    auto* show = new LSlideshow(page, LSlideshowBase::Ratio_3_1);
    show->setObjectName(QStringLiteral("GallerySlideshow"));
    show->setAutoPlayInterval(3000);
    root->addWidget(show);
    auto* log = new QPlainTextEdit(page);
    log->setReadOnly(true);
    log->setObjectName(QStringLiteral("SlideshowSignals"));
    root->addWidget(log, 1);
    auto* again = new QPushButton(Texts::tr("Add the web slides again"), page);
    root->addWidget(again, 0, Qt::AlignLeft);

    QObject::connect(show, &LSlideshow::webImageLoadSucess, log, [log](const QString& url, int index, int n) {
        log->appendPlainText(
            QStringLiteral("webImageLoadSucess(%1, %2, %3)").arg(QUrl(url).fileName()).arg(index).arg(n));
    });
    QObject::connect(show, &LSlideshow::webImageLoadSingleFailed, log, [log](const QString& url, int index) {
        log->appendPlainText(QStringLiteral("webImageLoadSingleFailed(%1, %2)").arg(QUrl(url).fileName()).arg(index));
    });
    QObject::connect(show, &LSlideshow::webImageLoadFinalFailed, log, [log](const QString& url, int index, int n) {
        log->appendPlainText(
            QStringLiteral("webImageLoadFinalFailed(%1, %2, %3)").arg(QUrl(url).fileName()).arg(index).arg(n));
    });

    show->addPixmap(Banner(QColor(0x1f, 0x6f, 0xeb), QColor(0x5c, 0x2d, 0xd5), QStringLiteral("Maplewood Markets"),
                           Texts::tr("Spring research week: five sectors in five days")),
                    QStringLiteral("https://maplewood.example/research"));
    show->addNativeImageOrGif(CopySample(QStringLiteral("landscape.jpg")), QString());
    show->addNativeImageOrGif(CopySample(QStringLiteral("bounce.webp")), QString());
    auto addWeb = [show] {
        show->addWebImageOrGif(
            WebSlide(QStringLiteral("harborline.png"),
                     Banner(QColor(0x14, 0xa0, 0x5c), QColor(0x0b, 0x5e, 0x7a), QStringLiteral("Harborline Securities"),
                            Texts::tr("Zero-fee transfers until the end of the month"))),
            QStringLiteral("https://harborline.example/transfer"), 1);
        show->addWebImageOrGif(
            WebSlide(QStringLiteral("quillstone.png"),
                     Banner(QColor(0xe0, 0x38, 0x3e), QColor(0xf5, 0xa6, 0x23), QStringLiteral("Quillstone Funds"),
                            Texts::tr("Quarterly outlook webinar"))),
            QString(), 1);
        show->addWebImageOrGif(QUrl::fromLocalFile(SlidesDir() + QStringLiteral("/missing-banner.png")).toString(),
                               QString(), 2);
    };
    addWeb();
    QObject::connect(again, &QPushButton::clicked, page, addWeb);
    return page;
}

void DemoSlideshowPage(QWidget* page) {
    // Wait for the web slides to settle, then show the first web slide.
    auto* show = page->findChild<LSlideshow*>(QStringLiteral("GallerySlideshow"));
    if (!show)
        return;
    show->setAutoPlayInterval(0);
    auto* log = page->findChild<QPlainTextEdit*>(QStringLiteral("SlideshowSignals"));
    for (int i = 0; i < 150 && (show->visibleCount() < 5 || !log->toPlainText().contains(QStringLiteral("Final")));
         ++i) {
        QEventLoop loop;
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
    }
    show->setCurrentIndex(3);
}
