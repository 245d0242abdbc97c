// Web images: a grid of pictures of every kind (JPEG, PNG, still and animated WebP, animated GIF,
// SVG, SVGZ) with rounded corners, crops, borders and scales; pictures that fail (a missing file,
// a truncated JPEG, a page of HTML named .svg) showing the failure placeholder after the reload
// helper's retries; a field that loads any URL or path; counters of downloads, cache hits and
// failures; and a button that empties the image cache.
//
// The samples are made by scripts/make-sample-images.sh and embedded in the gallery. They are
// copied once to <cache>/gallery_webimages/ and served offline as file: URLs through the real
// download delegate (CLxHttpDownloadDelegate, installed by the gallery like any host would), so
// everything on this page takes the same road as a picture from the network. The URL field takes
// http(s) addresses too.

#include "GalleryPages.h"

#include <LxCore/ProductPath.h>
#include <LxCore/SafeQtConnect.h>
#include <LxStdUI/FontToken.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/WebImage/LWebImageReloadHelper.h>
#include <LxUIKit/WebImage/LxCenterAspectCropper.h>
#include <LxUIKit/WebImage/LxHttpDownloadDelegate.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int kImageSide = 108;
constexpr int kColumns = 7;
constexpr unsigned kRetries = 2;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(WebImagesPage)
};

QString SamplesDir() { return core::product_path::GetCacheDir() + QStringLiteral("/gallery_webimages"); }

// Puts the embedded samples on disk (again when missing or changed).
void EnsureSamples() {
    QDir().mkpath(SamplesDir());
    QDirIterator it(QStringLiteral(":/gallery_samples"));
    while (it.hasNext()) {
        const QString resource = it.next();
        const QString target = SamplesDir() + QLatin1Char('/') + it.fileName();
        if (QFileInfo(target).size() == QFileInfo(resource).size())
            continue;
        QFile::remove(target);
        QFile::copy(resource, target);
        QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    }
}

QString SampleUrl(const QString& name) {
    return QUrl::fromLocalFile(SamplesDir() + QLatin1Char('/') + name).toString();
}

// Keeps the upper half of a picture.
class TopHalfCropper : public ILxWebImageCropper {
public:
    QRect GetCropRect(const QSize& size) override { return QRect(0, 0, size.width(), qMax(1, size.height() / 2)); }
};

struct SampleSpec {
    QString strFile;
    QString strCaption;
    std::function<void(LxWebImageWidget*)> fnSetup;
    bool bFailing = false;
};

std::vector<SampleSpec> Specs() {
    auto round = [](double r) {
        return [r](LxWebImageWidget* w) { w->SetRoundedCorner(LxCornerRadiusType::All, r, r); };
    };
    return {
        {QStringLiteral("landscape.jpg"), Texts::tr("JPEG · rounded 12"), round(12)},
        {QStringLiteral("landscape.jpg"), Texts::tr("same URL · 1:1 crop, circle, border"),
         [](LxWebImageWidget* w) {
             w->SetImageCropper(std::make_shared<CLxCenterAspectCropper>(1, 1));
             w->SetRoundedCorner(LxCornerRadiusType::All, kImageSide / 2.0, kImageSide / 2.0);
             w->SetBorder("ct_text_link", 3);
         }},
        {QStringLiteral("avatar.png"), Texts::tr("PNG · natural size × 0.75"),
         [](LxWebImageWidget* w) {
             w->EnableScaleToWidgetSize(false);
             w->SetScaleFactor(0.75);
         }},
        {QStringLiteral("bars.png"), Texts::tr("PNG · top corners, border"),
         [](LxWebImageWidget* w) {
             w->SetRoundedCorner(LxCornerRadiusType::Top, 16, 16);
             w->SetBorder("ct_border", 2);
         }},
        {QStringLiteral("sunset.webp"), Texts::tr("WebP still · top half"),
         [](LxWebImageWidget* w) { w->SetImageCropper(std::make_shared<TopHalfCropper>()); }},
        {QStringLiteral("spinner.gif"), Texts::tr("GIF · animated"), round(8)},
        {QStringLiteral("bounce.webp"), Texts::tr("WebP · animated, round"), round(kImageSide / 2.0)},
        {QStringLiteral("spinner.gif"), Texts::tr("same GIF URL · shared movie"),
         [](LxWebImageWidget* w) { w->SetBorder("ct_text_green", 2); }},
        {QStringLiteral("logo.svg"), Texts::tr("SVG · stretched"), {}},
        {QStringLiteral("pie.svgz"), Texts::tr("SVGZ · natural size"),
         [](LxWebImageWidget* w) { w->EnableScaleToWidgetSize(false); }},
        {QStringLiteral("named-png.png"), Texts::tr("GIF named .png"), round(8)},
        {QStringLiteral("no-such-file.png"), Texts::tr("missing file"), round(8), true},
        {QStringLiteral("truncated.jpg"), Texts::tr("truncated JPEG"), round(8), true},
        {QStringLiteral("not-an-image.svg"), Texts::tr("HTML named .svg"), round(8), true},
    };
}

class WebImageCard : public QWidget {
public:
    WebImageCard(const SampleSpec& spec, QWidget* parent) : QWidget(parent), m_spec(spec) {
        setObjectName(QStringLiteral("WebImageCard"));
        auto* v = new QVBoxLayout(this);
        v->setContentsMargins(8, 8, 8, 8);
        v->setSpacing(4);
        m_pImage = new LxWebImageWidget(this);
        m_pImage->setObjectName(QStringLiteral("WebImage_") + spec.strFile);
        m_pImage->setFixedSize(kImageSide, kImageSide);
        m_pImage->EnableScaleToWidgetSize(true);
        if (spec.fnSetup)
            spec.fnSetup(m_pImage);
        LWebImageReloadHelper::instance()->setAutoRetryTimes(m_pImage, kRetries);
        m_pCaption = new QLabel(spec.strCaption, this);
        m_pCaption->setFont(LFontTokenLoader::font(QStringLiteral("label2")));
        m_pCaption->setWordWrap(true);
        m_pCaption->setFixedWidth(kImageSide);
        m_pStatus = new QLabel(this);
        m_pStatus->setFont(LFontTokenLoader::font(QStringLiteral("caption1")));
        m_pStatus->setProperty("role", QStringLiteral("hint"));
        m_pStatus->setFixedWidth(kImageSide);
        m_pStatus->setWordWrap(true);
        v->addWidget(m_pImage, 0, Qt::AlignHCenter);
        v->addWidget(m_pCaption);
        v->addWidget(m_pStatus);
        v->addStretch(1);
    }
    LxWebImageWidget* Image() const { return m_pImage; }
    QString Url() const { return SampleUrl(m_spec.strFile); }
    void SetStatus(const QString& text) { m_pStatus->setText(text); }

protected:
    // Painted from the theme's colours (and again on a theme change, see the page).
    void paintEvent(QPaintEvent*) override {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(QPen(res->color(QStringLiteral("ct_line_separator")), 1));
        p.setBrush(res->color(QStringLiteral("ct_bg_secondary")));
        p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
    }

private:
    SampleSpec m_spec;
    QPointer<LxWebImageWidget> m_pImage;
    QPointer<QLabel> m_pCaption;
    QPointer<QLabel> m_pStatus;
};

class WebImagesPage : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(WebImagesPage)

public:
    explicit WebImagesPage(QWidget* parent) : QWidget(parent) {
        EnsureSamples();
        auto* outer = new QVBoxLayout(this);
        outer->setContentsMargins(0, 0, 0, 0);
        auto* scroll = new QScrollArea(this);
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        auto* body = new QWidget(scroll);
        body->setObjectName(QStringLiteral("WebImagesBody"));
        auto* layout = new QVBoxLayout(body);
        layout->setContentsMargins(24, 20, 24, 20);
        layout->setSpacing(10);

        auto* title = new QLabel(tr("Web images"), body);
        title->setFont(LFontTokenLoader::font(QStringLiteral("BigTitle2")));
        auto* hint =
            new QLabel(tr("Every picture below is fetched through the download delegate, decoded once into the "
                          "shared image cache and shown with its own corners, crop, border and scale. Failing "
                          "pictures retry twice through the reload helper, then show the failure placeholder. "
                          "Switch the theme to see the placeholders follow it."),
                       body);
        hint->setProperty("role", QStringLiteral("hint"));
        hint->setWordWrap(true);
        layout->addWidget(title);
        layout->addWidget(hint);

        // Counters, the cache buttons and the URL field on the left, the loaded picture on the right.
        auto* top = new QHBoxLayout;
        top->setSpacing(16);
        auto* controls = new QVBoxLayout;
        controls->setSpacing(8);
        m_pCounters = new QLabel(body);
        m_pCounters->setObjectName(QStringLiteral("WebImageCounters"));
        m_pCounters->setWordWrap(true);
        auto* buttons = new QHBoxLayout;
        auto* reload = new QPushButton(tr("Reload all"), body);
        reload->setObjectName(QStringLiteral("WebImageReloadAll"));
        auto* clear = new QPushButton(tr("Clear cache"), body);
        clear->setObjectName(QStringLiteral("WebImageClearCache"));
        buttons->addWidget(reload);
        buttons->addWidget(clear);
        buttons->addStretch(1);
        auto* urlRow = new QHBoxLayout;
        m_pUrlEdit = new QLineEdit(body);
        m_pUrlEdit->setObjectName(QStringLiteral("WebImageUrl"));
        m_pUrlEdit->setPlaceholderText(tr("Load any picture: https://…, file:///…, or a local path"));
        auto* load = new QPushButton(tr("Load"), body);
        load->setObjectName(QStringLiteral("WebImageLoad"));
        urlRow->addWidget(m_pUrlEdit, 1);
        urlRow->addWidget(load);
        m_pPreviewStatus = new QLabel(tr("Type an address and press Load."), body);
        m_pPreviewStatus->setObjectName(QStringLiteral("WebImagePreviewStatus"));
        m_pPreviewStatus->setProperty("role", QStringLiteral("hint"));
        m_pPreviewStatus->setWordWrap(true);
        controls->addWidget(m_pCounters);
        controls->addLayout(buttons);
        controls->addLayout(urlRow);
        controls->addWidget(m_pPreviewStatus);
        controls->addStretch(1);
        m_pPreview = new LxWebImageWidget(body);
        m_pPreview->setObjectName(QStringLiteral("WebImagePreview"));
        m_pPreview->setFixedSize(240, 150);
        m_pPreview->EnableScaleToWidgetSize(true);
        m_pPreview->SetImageCropper(std::make_shared<CLxCenterAspectCropper>(240, 150));
        m_pPreview->SetRoundedCorner(LxCornerRadiusType::All, 10, 10);
        m_pPreview->SetDefaultImageSkin(QString(), QStringLiteral(":/LxUIKit/img/image_failed.svg"));
        LWebImageReloadHelper::instance()->setAutoRetryTimes(m_pPreview, 1);
        top->addLayout(controls, 1);
        top->addWidget(m_pPreview, 0, Qt::AlignTop);
        layout->addLayout(top);

        // The grid.
        auto* grid = new QGridLayout;
        grid->setHorizontalSpacing(10);
        grid->setVerticalSpacing(10);
        const std::vector<SampleSpec> specs = Specs();
        for (size_t i = 0; i < specs.size(); ++i) {
            auto* card = new WebImageCard(specs[i], body);
            m_vecCards.push_back(card);
            grid->addWidget(card, int(i / kColumns), int(i % kColumns));
            LX_SAFE_CONNECT_IN("Gallery", card->Image(), &LxWebImageWidget::ImageLoadStatusSignal, this,
                               [this, card](const QString&, LxImageLoadStatus status) { OnStatus(card, status); });
        }
        grid->setColumnStretch(kColumns, 1);
        layout->addLayout(grid);
        layout->addStretch(1);
        scroll->setWidget(body);
        outer->addWidget(scroll);

        LX_SAFE_CONNECT_IN("Gallery", m_pPreview.data(), &LxWebImageWidget::ImageLoadStatusSignal, this,
                           [this](const QString& url, LxImageLoadStatus status) { OnPreviewStatus(url, status); });
        LX_SAFE_CONNECT_IN("Gallery", LWebImageReloadHelper::instance(), &LWebImageReloadHelper::webImageLoadSucess,
                           this, [this](LxWebImageWidget* w, unsigned n) { OnFinal(w, true, n); });
        LX_SAFE_CONNECT_IN("Gallery", LWebImageReloadHelper::instance(),
                           &LWebImageReloadHelper::webImageLoadFinalFailed, this,
                           [this](LxWebImageWidget* w, unsigned n) { OnFinal(w, false, n); });
        LX_SAFE_CONNECT_IN("Gallery", reload, &QPushButton::clicked, this, [this] { LoadAll(); });
        LX_SAFE_CONNECT_IN("Gallery", clear, &QPushButton::clicked, this, [this] { ClearCache(); });
        LX_SAFE_CONNECT_IN("Gallery", load, &QPushButton::clicked, this,
                           [this] { LoadUrl(m_pUrlEdit->text().trimmed()); });
        LX_SAFE_CONNECT_IN("Gallery", m_pUrlEdit.data(), &QLineEdit::returnPressed, this,
                           [this] { LoadUrl(m_pUrlEdit->text().trimmed()); });
        LX_SAFE_CONNECT_IN("Gallery", lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                           [this] { ApplyTheme(); });
        auto* timer = new QTimer(this);
        LX_SAFE_CONNECT_IN("Gallery", timer, &QTimer::timeout, this, [this] { UpdateCounters(); });
        timer->start(400);

        ApplyTheme();
        LoadAll();
    }

    void LoadAll() {
        for (WebImageCard* card : m_vecCards) {
            card->SetStatus(tr("loading…"));
            Set(card->Image(), card->Url());
        }
        UpdateCounters();
    }

    void LoadUrl(const QString& url) {
        m_pUrlEdit->setText(url);
        m_pPreviewStatus->setText(url.isEmpty() ? tr("Type an address and press Load.") : tr("Loading %1 …").arg(url));
        Set(m_pPreview, url);
    }

    void ClearCache() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        m_strLastClear = tr("cache emptied (%1 pictures, %2 movies, %3 SVG)")
                             .arg(cache.PixmapCount())
                             .arg(cache.MovieCount())
                             .arg(cache.SvgCount());
        cache.Clear();
        UpdateCounters();
    }

private:
    // SetUrl, telling cache hits apart: they are answered before SetUrl returns.
    void Set(LxWebImageWidget* widget, const QString& url) {
        m_bInSetUrl = true;
        widget->SetUrl(url);
        m_bInSetUrl = false;
    }

    void OnStatus(WebImageCard* card, LxImageLoadStatus status) {
        Count(status);
        const unsigned failures = card->Image()->property(LWebImageReloadHelper::kFailCountProperty).toUInt();
        switch (status) {
        case LxImageLoadStatus::Loaded: {
            const QSize size = card->Image()->GetImageSize();
            card->SetStatus(QStringLiteral("%1 × %2%3")
                                .arg(size.width())
                                .arg(size.height())
                                .arg(m_bInSetUrl ? tr(" · from cache") : QString()));
            break;
        }
        case LxImageLoadStatus::DownloadFailed:
        case LxImageLoadStatus::LoadFailed:
            // The reload helper saw the status first: a count back at 0 means it gave up (and
            // OnFinal wrote the verdict); otherwise a retry is on its way.
            if (failures > 0)
                card->SetStatus(
                    tr("%1, retry %2 of %3…")
                        .arg(status == LxImageLoadStatus::DownloadFailed ? tr("download failed") : tr("cannot decode"))
                        .arg(failures)
                        .arg(kRetries));
            break;
        default: break;
        }
    }

    void OnFinal(LxWebImageWidget* widget, bool bLoaded, unsigned attempts) {
        for (WebImageCard* card : m_vecCards) {
            if (card->Image() != widget || bLoaded)
                continue;
            card->SetStatus(tr("failed after %1 attempts, placeholder shown").arg(attempts));
        }
        if (widget == m_pPreview && !bLoaded)
            m_pPreviewStatus->setText(tr("Failed after %1 attempts: %2").arg(attempts).arg(m_pPreview->GetUrl()));
    }

    void OnPreviewStatus(const QString& url, LxImageLoadStatus status) {
        Count(status);
        if (status == LxImageLoadStatus::Loaded) {
            const QSize size = m_pPreview->GetImageSize();
            static const char* const kKinds[] = {"", QT_TR_NOOP("still picture"), QT_TR_NOOP("SVG"),
                                                 QT_TR_NOOP("animation")};
            const char* kind = kKinds[qBound(0, int(m_pPreview->GetPrivateImageType()), 3)];
            m_pPreviewStatus->setText(QStringLiteral("%1\n%2 × %3 %4%5")
                                          .arg(url)
                                          .arg(size.width())
                                          .arg(size.height())
                                          .arg(*kind ? tr(kind) : QString())
                                          .arg(m_bInSetUrl ? tr(", from the cache") : QString()));
        }
    }

    void Count(LxImageLoadStatus status) {
        if (status == LxImageLoadStatus::Loaded && m_bInSetUrl)
            ++m_u64CacheHits;
        else if (status == LxImageLoadStatus::DownloadFailed || status == LxImageLoadStatus::LoadFailed)
            ++m_u64Failures;
        UpdateCounters();
    }

    void UpdateCounters() {
        QString downloads = tr("no download delegate installed");
        if (auto* d = dynamic_cast<CLxHttpDownloadDelegate*>(ILxUIKitHttpDownloadMgr::delegate())) {
            const CLxHttpDownloadDelegate::Statistics& s = d->GetStatistics();
            downloads = tr("Downloads asked: %1 (network %2, already on disk %3, local files %4)")
                            .arg(s.u64Requests + s.u64DiskHits + s.u64LocalFiles)
                            .arg(s.u64Requests)
                            .arg(s.u64DiskHits)
                            .arg(s.u64LocalFiles);
        }
        const auto& cache = CLxWebImageCacheMgr::GetInstance();
        const double mib = (double(cache.PixmapTotalCost()) + double(cache.MovieTotalCost())) / (1024.0 * 1024.0);
        m_pCounters->setText(tr("%1 · Cache hits: %2 · Failures: %3\nIn the cache: %4 pictures, %5 "
                                "movies, %6 SVG, %7 MiB%8")
                                 .arg(downloads)
                                 .arg(m_u64CacheHits)
                                 .arg(m_u64Failures)
                                 .arg(cache.PixmapCount())
                                 .arg(cache.MovieCount())
                                 .arg(cache.SvgCount())
                                 .arg(mib, 0, 'f', 2)
                                 .arg(m_strLastClear.isEmpty() ? QString() : QStringLiteral(" · ") + m_strLastClear));
    }

    void ApplyTheme() {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        // Each label gets its colour on itself, so that no broader rule of the window can win.
        const QString text = res->colorString(QStringLiteral("ct_text_h1"));
        const QString hint = res->colorString(QStringLiteral("ct_text_h2"));
        for (QLabel* label : findChildren<QLabel*>())
            label->setStyleSheet(QStringLiteral("color:%1;")
                                     .arg(label->property("role").toString() == QLatin1String("hint") ? hint : text));
        if (m_pUrlEdit)
            m_pUrlEdit->setStyleSheet(QStringLiteral("color:%1; background:%2; border:1px solid %3; border-radius:4px;"
                                                     " padding:3px;")
                                          .arg(text, res->colorString(QStringLiteral("ct_bg_primary")),
                                               res->colorString(QStringLiteral("ct_border"))));
        for (WebImageCard* card : m_vecCards)
            card->update();
    }

    std::vector<WebImageCard*> m_vecCards;
    QPointer<QLabel> m_pCounters;
    QPointer<QLineEdit> m_pUrlEdit;
    QPointer<LxWebImageWidget> m_pPreview;
    QPointer<QLabel> m_pPreviewStatus;
    bool m_bInSetUrl = false;
    quint64 m_u64CacheHits = 0;
    quint64 m_u64Failures = 0;
    QString m_strLastClear;
};

}  // namespace

QWidget* CreateWebImagesPage(QWidget* parent) { return new WebImagesPage(parent); }

void DemoWebImagesPage(QWidget* page) {
    if (auto* p = dynamic_cast<WebImagesPage*>(page)) {
        // Load the landscape again through the field: it comes from the cache at once.
        p->LoadUrl(SampleUrl(QStringLiteral("landscape.jpg")));
        p->LoadAll();
    }
}
