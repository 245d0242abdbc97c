// Image preview: a list of local pictures (two posters with captions, an animated GIF, an SVG, a
// 6000 x 4000 photo and a broken JPEG) that opens the preview window, and a translate button that
// works offline against the gallery's own translation stand-in on 127.0.0.1
// (GalleryTranslateService), whose made-up translations are painted over the posters' captions.
//
// The posters and the large photo are drawn by this page on first use and kept under
// <cache>/gallery_preview/; the GIF, SVG and broken JPEG are the embedded web-image samples.

#include "GalleryPages.h"
#include "GalleryTranslateService.h"

#include <LxCore/ProductPath.h>
#include <LxCore/SafeQtConnect.h>
#include <LxStdUI/FontToken.h>
#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewWnd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLinearGradient>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>

namespace {

QString Dir() { return core::product_path::GetCacheDir() + QStringLiteral("/gallery_preview"); }

void DrawBand(QPainter& p, const QSize& size, const QRectF& band, const QColor& bg, const QColor& fg,
              const QString& text, int pixelSize) {
    const QRectF r(band.x() * size.width(), band.y() * size.height(), band.width() * size.width(),
                   band.height() * size.height());
    p.fillRect(r, bg);
    QFont font = LFontTokenLoader::font(QStringLiteral("title1"));
    font.setPixelSize(pixelSize);
    p.setFont(font);
    p.setPen(fg);
    p.drawText(r, Qt::AlignCenter, text);
}

// A poster of an invented company: a picture area between two caption bands in German.
QImage Poster(const QSize& size, const QColor& top, const QColor& bottom, const QString& title, const QString& note,
              bool bChart) {
    QImage img(size, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 0, size.height());
    g.setColorAt(0, top);
    g.setColorAt(1, bottom);
    p.fillRect(img.rect(), g);
    p.setPen(Qt::NoPen);
    if (bChart) {
        const double values[] = {0.35, 0.5, 0.42, 0.66, 0.8};
        for (int i = 0; i < 5; ++i) {
            const double w = size.width() * 0.12, x = size.width() * (0.15 + i * 0.15);
            const double h = size.height() * 0.4 * values[i];
            p.setBrush(QColor(255, 255, 255, 200));
            p.drawRect(QRectF(x, size.height() * 0.66 - h, w, h));
        }
    } else {
        p.setBrush(QColor(255, 255, 255, 170));
        p.drawEllipse(QPointF(size.width() * 0.5, size.height() * 0.47), size.height() * 0.17, size.height() * 0.17);
        p.setBrush(QColor(255, 255, 255, 90));
        p.drawEllipse(QPointF(size.width() * 0.5, size.height() * 0.47), size.height() * 0.26, size.height() * 0.26);
    }
    DrawBand(p, size, GalleryTranslateService::TitleBand(), QColor(20, 32, 60), QColor(235, 240, 250), title,
             size.height() / 18);
    DrawBand(p, size, GalleryTranslateService::NoteBand(), QColor(245, 232, 200), QColor(70, 50, 20), note,
             size.height() / 24);
    return img;
}

// A photo-like 6000 x 4000 picture: gradients, a grid and labelled tiles to find one's way when zoomed.
QImage LargePhoto() {
    QImage img(6000, 4000, QImage::Format_RGB32);
    QPainter p(&img);
    QLinearGradient g(0, 0, 6000, 4000);
    g.setColorAt(0, QColor(24, 74, 110));
    g.setColorAt(0.5, QColor(90, 150, 120));
    g.setColorAt(1, QColor(230, 190, 110));
    p.fillRect(img.rect(), g);
    p.setPen(QPen(QColor(255, 255, 255, 90), 4));
    for (int x = 0; x <= 6000; x += 250)
        p.drawLine(x, 0, x, 4000);
    for (int y = 0; y <= 4000; y += 250)
        p.drawLine(0, y, 6000, y);
    QFont font = LFontTokenLoader::font(QStringLiteral("Display1"));
    font.setPixelSize(60);
    p.setFont(font);
    p.setPen(QColor(255, 255, 255, 220));
    for (int x = 0; x < 6000; x += 1000)
        for (int y = 0; y < 4000; y += 1000)
            p.drawText(QRect(x, y, 1000, 1000), Qt::AlignCenter, QStringLiteral("%1 · %2").arg(x / 1000).arg(y / 1000));
    return img;
}

QString Ensure(const QString& name, const std::function<QImage()>& make, const char* format) {
    const QString path = Dir() + QLatin1Char('/') + name;
    if (!QFileInfo::exists(path)) {
        QDir().mkpath(Dir());
        make().save(path, format, 88);
    }
    return path;
}

QString EnsureSample(const QString& name) {
    const QString path = Dir() + QLatin1Char('/') + name;
    if (!QFileInfo::exists(path)) {
        QDir().mkpath(Dir());
        QFile::copy(QStringLiteral(":/gallery_samples/") + name, path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    }
    return path;
}

struct Sample {
    QString strPath;
    QString strCaption;
};

class ImagePreviewPage : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(ImagePreviewPage)

public:
    explicit ImagePreviewPage(QWidget* parent) : QWidget(parent) {
        setObjectName(QStringLiteral("ImagePreviewPage"));
        const QString service = GalleryTranslateService::EnsureStarted();
        m_samples = {
            {Ensure(
                 QStringLiteral("poster-norvale.png"),
                 [] {
                     return Poster(QSize(900, 600), QColor(60, 110, 170), QColor(20, 40, 80),
                                   QStringLiteral("Norvale Dynamics · Quartalszahlen"),
                                   QStringLiteral("Umsatz +12 %, neues Werk in Vestmark"), false);
                 },
                 "PNG"),
             tr("Poster with captions")},
            {Ensure(
                 QStringLiteral("poster-kestrel.png"),
                 [] {
                     return Poster(QSize(640, 900), QColor(150, 70, 60), QColor(60, 20, 40),
                                   QStringLiteral("Kestrel Foods · Jahresbericht"),
                                   QStringLiteral("Fünf Jahre Wachstum in Folge"), true);
                 },
                 "PNG"),
             tr("Tall chart with captions")},
            {EnsureSample(QStringLiteral("spinner.gif")), tr("Animated GIF (never zoomed)")},
            {EnsureSample(QStringLiteral("logo.svg")), tr("SVG")},
            {Ensure(QStringLiteral("photo-6000x4000.jpg"), &LargePhoto, "JPEG"), tr("Photo, 6000 × 4000")},
            {EnsureSample(QStringLiteral("truncated.jpg")), tr("Broken JPEG")},
        };

        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(24, 20, 24, 20);
        layout->setSpacing(10);
        auto* title = new QLabel(tr("Image preview"), this);
        title->setFont(LFontTokenLoader::font(QStringLiteral("BigTitle2")));
        auto* hint = new QLabel(tr("Double-click a picture to open it in the preview window. Zoom with the wheel or "
                                   "the title bar, drag a large picture, step with Left and Right, right-click to "
                                   "copy. The translate button sends the picture to the demonstration service."),
                                this);
        hint->setWordWrap(true);
        hint->setProperty("role", QStringLiteral("hint"));
        auto* address = new QLabel(service.isEmpty() ? tr("The demonstration translation service could not start.")
                                                     : tr("Demonstration translation service: %1").arg(service),
                                   this);
        address->setObjectName(QStringLiteral("PreviewServiceAddress"));
        address->setFont(LFontTokenLoader::font(QStringLiteral("caption1")));

        m_pList = new QListWidget(this);
        m_pList->setObjectName(QStringLiteral("PreviewPictureList"));
        m_pList->setViewMode(QListView::IconMode);
        m_pList->setIconSize(QSize(120, 90));
        m_pList->setGridSize(QSize(170, 140));
        m_pList->setResizeMode(QListView::Adjust);
        m_pList->setMovement(QListView::Static);
        m_pList->setWordWrap(true);
        for (const Sample& s : m_samples) {
            auto* item = new QListWidgetItem(Thumbnail(s.strPath), s.strCaption, m_pList);
            item->setToolTip(s.strPath);
        }
        m_pList->setCurrentRow(0);

        auto* buttons = new QHBoxLayout;
        auto* open = new QPushButton(tr("Open preview"), this);
        open->setObjectName(QStringLiteral("PreviewOpen"));
        auto* translate = new QPushButton(tr("Open and translate"), this);
        translate->setObjectName(QStringLiteral("PreviewOpenTranslate"));
        buttons->addWidget(open);
        buttons->addWidget(translate);
        buttons->addStretch(1);

        layout->addWidget(title);
        layout->addWidget(hint);
        layout->addWidget(address);
        layout->addWidget(m_pList, 1);
        layout->addLayout(buttons);

        LX_SAFE_CONNECT_IN("Gallery", m_pList.data(), &QListWidget::itemDoubleClicked, this,
                           [this](QListWidgetItem* item) { Open(m_pList->row(item), false); });
        LX_SAFE_CONNECT_IN("Gallery", open, &QPushButton::clicked, this, [this] { Open(CurrentRow(), false); });
        LX_SAFE_CONNECT_IN("Gallery", translate, &QPushButton::clicked, this, [this] { Open(CurrentRow(), true); });
    }

    // Opens the window on picture `row`; with bTranslate asks for its translation at once.
    void Open(int row, bool bTranslate, bool bZoom = false) {
        QVector<std::shared_ptr<ImageInfo>> images;
        for (const Sample& s : m_samples) {
            const QSize size = QImageReader(s.strPath).size();
            images.push_back(std::make_shared<ImageInfo>(s.strPath, qMax(0, size.width()), qMax(0, size.height())));
        }
        CLxImagePreviewWnd& wnd = CLxImagePreviewWnd::instance();
        wnd.OpenImagePreviewWnd(images, row);
        if (bZoom)
            wnd.GetContentWidget()->OnZoomIn();
        if (bTranslate)
            wnd.OnTranslateBtnClicked();
    }

private:
    int CurrentRow() const { return qMax(0, m_pList->currentRow()); }

    static QIcon Thumbnail(const QString& path) {
        QImageReader reader(path);
        const QSize size = reader.size();
        if (size.isValid() && (size.width() > 240 || size.height() > 180))
            reader.setScaledSize(size.scaled(240, 180, Qt::KeepAspectRatio));
        QPixmap pixmap = QPixmap::fromImageReader(&reader);
        if (pixmap.isNull()) {  // the broken sample
            pixmap = QPixmap(120, 90);
            pixmap.fill(QColor(200, 200, 200));
        }
        return QIcon(pixmap);
    }

    std::vector<Sample> m_samples;
    QPointer<QListWidget> m_pList;
};

}  // namespace

QWidget* CreateImagePreviewPage(QWidget* parent) { return new ImagePreviewPage(parent); }

void DemoImagePreviewPage(QWidget* page) {
    auto* p = dynamic_cast<ImagePreviewPage*>(page);
    if (!p)
        return;
    p->Open(0, true, true);
    // Over the gallery's own window, so that a screenshot of it shows the preview.
    QWidget* gallery = page->window();
    CLxImagePreviewWnd& wnd = CLxImagePreviewWnd::instance();
    wnd.move(gallery->mapToGlobal(
        QPoint(qMax(0, gallery->width() - wnd.width() - 24), qMax(0, gallery->height() - wnd.height() - 80))));
}
