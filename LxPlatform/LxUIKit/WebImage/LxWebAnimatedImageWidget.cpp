#include <LxUIKit/WebImage/LxWebAnimatedImageWidget_p.h>

#include <LxCore/FileSystem.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LxDecodedFrom_p.h>
#include <LxUIKit/WebImage/LxImageWidgetBase_p.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageDecoder_p.h>

#include <QHash>

namespace {

// Viewers per shared movie (GUI thread only). Entries go away with their movie. Never destroyed:
// the image cache deletes its movies at process exit, after function statics made later are gone.
QHash<QMovie*, int>& Viewers() {
    static auto* s_pViewers = new QHash<QMovie*, int>;
    return *s_pViewers;
}

void AttachViewer(QMovie* movie) {
    auto& viewers = Viewers();
    auto it = viewers.find(movie);
    if (it == viewers.end()) {
        it = viewers.insert(movie, 0);
        QObject::connect(movie, &QObject::destroyed, [movie] { Viewers().remove(movie); });
    }
    ++it.value();
    if (movie->state() == QMovie::NotRunning)
        movie->start();
    else if (movie->state() == QMovie::Paused)
        movie->setPaused(false);
}

void DetachViewer(QMovie* movie) {
    auto& viewers = Viewers();
    auto it = viewers.find(movie);
    if (it == viewers.end())
        return;
    if (--it.value() <= 0) {
        it.value() = 0;
        // Nobody shows it: let it rest until the next viewer comes.
        if (movie->state() == QMovie::Running)
            movie->setPaused(true);
    }
}

}  // namespace

CLxWebAnimatedImageWidget::CLxWebAnimatedImageWidget(QWidget* parent) : CLxImageWidgetBase(parent) {}

CLxWebAnimatedImageWidget::~CLxWebAnimatedImageWidget() { Clear(); }

int CLxWebAnimatedImageWidget::SharedViewerCount(QMovie* movie) { return Viewers().value(movie, 0); }

bool CLxWebAnimatedImageWidget::Load(const QString& url, const QString& filePath) {
    Clear();
    // Widgets showing one URL hear of one download together: the first makes the movie, the
    // others play the cache's one instead of each decoding its own.
    const QString stamp = lxuikit_image::FileStamp(filePath);
    if (QMovie* cached = CLxWebImageCacheMgr::GetInstance().GetMovie(url)) {
        // The address alone could be a later movie's: it must also play this file.
        if (CLxWebImageCacheMgr::MovieFilePath(cached) == filePath &&
            lxuikit_image::WasDecodedFrom(lxuikit_image::CachedKind::Movie, url, stamp, std::uintptr_t(cached)))
            return LoadCache(url);
    }
    QByteArray format, data;
    QString why;
    if (!CLxWebImageDecoder::CheckAnimated(filePath, &format, &why, &data)) {
        LXUIKIT_LOG_WARN("cannot play {}: {}", filePath, why);
        return false;
    }
    ShowOwnMovie(filePath, data, format);
    if (!LXUIKIT_ASSERT(m_pMovie != nullptr && m_pMovie->isValid())) {
        Clear();
        return false;
    }
    m_strUrl = url;
    CLxWebImageCacheMgr& cache = CLxWebImageCacheMgr::GetInstance();
    cache.InsertMovie(url, *m_pMovie);
    lxuikit_image::RememberDecoded(lxuikit_image::CachedKind::Movie, url, stamp, std::uintptr_t(cache.GetMovie(url)));
    return true;
}

bool CLxWebAnimatedImageWidget::LoadCache(const QString& url) {
    Clear();
    QMovie* movie = CLxWebImageCacheMgr::GetInstance().GetMovie(url);
    if (movie)
        ShowSharedMovie(movie);
    if (!LXUIKIT_ASSERT(m_pMovie != nullptr && m_pMovie->isValid())) {
        Clear();
        return false;
    }
    m_strUrl = url;
    return true;
}

void CLxWebAnimatedImageWidget::ShowOwnMovie(const QString& filePath, const QByteArray& data,
                                             const QByteArray& format) {
    // The movie is the widget's child: it goes with the widget. It plays the checked bytes from
    // memory: nothing can change them on disk, and no file stays open.
    QMovie* movie = CLxWebImageCacheMgr::NewMemoryMovie(filePath, data, format, this);
    m_pMovie = movie;
    m_bOwnsMovie = true;
    m_strFilePath = filePath;
    LXUIKIT_SAFE_CONNECT(movie, &QMovie::frameChanged, this, [this] { OnFrameChanged(); });
    movie->start();
    InvalidatePrepared();
    updateGeometry();
    update();
}

void CLxWebAnimatedImageWidget::ShowSharedMovie(QMovie* movie) {
    m_pMovie = movie;
    m_bOwnsMovie = false;
    m_strFilePath = CLxWebImageCacheMgr::MovieFilePath(movie);
    LXUIKIT_SAFE_CONNECT(movie, &QMovie::frameChanged, this, [this] { OnFrameChanged(); });
    m_destroyedConnection =
        LXUIKIT_SAFE_CONNECT(movie, &QObject::destroyed, this, [this] { OnSharedMovieDestroyed(); });
    AttachViewer(movie);
    m_lastFrame = movie->currentPixmap();
    m_lastFrameSize = m_lastFrame.size();
    InvalidatePrepared();
    updateGeometry();
    update();
}

void CLxWebAnimatedImageWidget::OnFrameChanged() {
    if (!m_pMovie)
        return;
    m_lastFrame = m_pMovie->currentPixmap();
    if (m_lastFrame.size() != m_lastFrameSize) {
        m_lastFrameSize = m_lastFrame.size();
        updateGeometry();
    }
    update();
}

void CLxWebAnimatedImageWidget::OnSharedMovieDestroyed() {
    // The cache let the movie go while it was shown here; it may still be inside its own
    // bookkeeping, so the replacement is looked up later.
    QObject::disconnect(m_destroyedConnection);
    m_pMovie = nullptr;
    m_bOwnsMovie = false;
    m_bReattachPending = true;
    QMetaObject::invokeMethod(
        this, [this] { Reattach(); }, Qt::QueuedConnection);
}

void CLxWebAnimatedImageWidget::Reattach() {
    if (!m_bReattachPending)
        return;  // cleared or given another picture meanwhile
    m_bReattachPending = false;
    const QString url = m_strUrl, file = m_strFilePath;
    if (QMovie* newer = CLxWebImageCacheMgr::GetInstance().GetMovie(url)) {
        ShowSharedMovie(newer);
    } else if (QByteArray format, data; CLxWebImageDecoder::CheckAnimated(file, &format, nullptr, &data)) {
        ShowOwnMovie(file, data, format);
    } else {
        LXUIKIT_LOG_WARN("the shared movie of {} is gone and {} cannot be played", url, file);
        m_lastFrame = QPixmap();
        InvalidatePrepared();
        update();
        return;
    }
    m_strUrl = url;
}

void CLxWebAnimatedImageWidget::Clear() {
    if (QMovie* movie = m_pMovie) {
        QObject::disconnect(movie, nullptr, this, nullptr);
        QObject::disconnect(m_destroyedConnection);
        if (m_bOwnsMovie)
            delete movie;
        else
            DetachViewer(movie);
    }
    m_pMovie = nullptr;
    m_bOwnsMovie = false;
    m_bReattachPending = false;
    m_strUrl.clear();
    m_strFilePath.clear();
    m_lastFrame = QPixmap();
    m_lastFrameSize = QSize();
    InvalidatePrepared();
    updateGeometry();
    update();
}

QSize CLxWebAnimatedImageWidget::GetImageSize() const {
    if (!m_pMovie)
        return m_bReattachPending ? m_lastFrame.size() : QSize();
    const QPixmap frame = m_pMovie->currentPixmap();
    return frame.isNull() ? m_pMovie->frameRect().size() : frame.size();
}

QPixmap CLxWebAnimatedImageWidget::GetCurPixmap() {
    if (m_pMovie)
        return m_pMovie->currentPixmap();
    return m_bReattachPending ? m_lastFrame : QPixmap();
}

void CLxWebAnimatedImageWidget::Copy() {
    if (!LXUIKIT_ASSERT(m_pMovie != nullptr))
        return;
    const QString path = CLxWebImageCacheMgr::MovieFilePath(m_pMovie);
    QByteArray bytes;
    if (!core::fs::ReadFile(path, bytes)) {
        LXUIKIT_LOG_WARN("cannot read {} to copy it", path);
        return;
    }
    lxuikit_image::CopyToClipboard(QImage(), QStringLiteral("image/gif"), bytes, path);
}
