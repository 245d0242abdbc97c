#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>

#include <LxCore/FileSystem.h>
#include <LxCore/StrConv.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QBuffer>

namespace {
const char* const kFilePathProperty = "lxuikit_movie_file";
}  // namespace

static_assert(sizeof(unsigned long) == sizeof(uint64_t), "cache keys are 64-bit hashes");

CLxWebImageCacheMgr& CLxWebImageCacheMgr::GetInstance() {
    static CLxWebImageCacheMgr s_instance;
    return s_instance;
}

CLxWebImageCacheMgr::CLxWebImageCacheMgr() : m_pixmapCache(m_ki32MaxCacheCost), m_movieCache(m_ki32MaxCacheCost) {
    LXUIKIT_LOG_INFO("m_ki32MaxCacheCost:{}", m_ki32MaxCacheCost);
}

CLxWebImageCacheMgr::~CLxWebImageCacheMgr() = default;  // QCache deletes what it holds

unsigned long CLxWebImageCacheMgr::KeyOf(const QString& url) {
    // Equal to HashStrToUInt64(url.toStdString()), the hash of the UTF-8 bytes; ASCII URLs (nearly
    // all) are converted on the stack, so a lookup allocates nothing.
    constexpr int kStackChars = 512;
    const int n = url.size();
    if (n <= kStackChars) {
        char bytes[kStackChars];
        const QChar* chars = url.constData();
        bool bAscii = true;
        for (int i = 0; i < n && bAscii; ++i) {
            const ushort u = chars[i].unicode();
            bAscii = u < 0x80;
            bytes[i] = char(u);
        }
        if (bAscii)
            return static_cast<unsigned long>(core::str_conv::HashBytesToUInt64(bytes, size_t(n)));
    }
    const QByteArray utf8 = url.toUtf8();
    return static_cast<unsigned long>(core::str_conv::HashBytesToUInt64(utf8.constData(), size_t(utf8.size())));
}

int CLxWebImageCacheMgr::GetCacheType(const QString& url) const {
    const unsigned long key = KeyOf(url);
    if (m_hashSvgFilePath.contains(key))
        return CacheType_Svg;
    if (m_pixmapCache.contains(key))
        return CacheType_Pixmap;
    if (m_movieCache.contains(key))
        return CacheType_Movie;
    return CacheType_None;
}

QPixmap CLxWebImageCacheMgr::GetPixmap(const QString& url) {
    const QPixmap* pixmap = m_pixmapCache.object(KeyOf(url));
    return pixmap ? *pixmap : QPixmap();
}

void CLxWebImageCacheMgr::InsertPixmap(const QString& url, const QPixmap& pixmap) {
    const int i32PixmapCacheCost = GetPixmapCacheCost(pixmap);
    LXUIKIT_LOG_INFO("strUrl:{},i32PixmapCacheCost:{}", url, i32PixmapCacheCost);
    m_pixmapCache.insert(KeyOf(url), new QPixmap(pixmap), i32PixmapCacheCost);
}

QMovie* CLxWebImageCacheMgr::GetMovie(const QString& url) { return m_movieCache.object(KeyOf(url)); }

void CLxWebImageCacheMgr::InsertMovie(const QString& url, const QMovie& movie) {
    const QString path = MovieFilePath(&movie);
    QByteArray data;
    if (auto* buffer = qobject_cast<QBuffer*>(movie.device()))
        data = buffer->data();  // shared, not copied
    else
        core::fs::ReadFile(path, data);
    QMovie* pMovie = NewMemoryMovie(path, data, QByteArray());
    m_movieCache.insert(KeyOf(url), pMovie, GetMovieCacheCost(pMovie));
}

QMovie* CLxWebImageCacheMgr::NewMemoryMovie(const QString& filePath, const QByteArray& data, const QByteArray& format,
                                            QObject* parent) {
    auto* movie = new QMovie(parent);
    auto* buffer = new QBuffer(movie);  // goes with the movie
    buffer->setData(data);
    buffer->open(QIODevice::ReadOnly);
    movie->setProperty(kFilePathProperty, filePath);
    movie->setFormat(format);
    movie->setDevice(buffer);
    return movie;
}

QString CLxWebImageCacheMgr::MovieFilePath(const QMovie* movie) {
    if (!movie)
        return QString();
    const QString name = movie->fileName();
    return name.isEmpty() ? movie->property(kFilePathProperty).toString() : name;
}

QString CLxWebImageCacheMgr::GetSvgFilePath(const QString& url) const { return m_hashSvgFilePath.value(KeyOf(url)); }

void CLxWebImageCacheMgr::InsertSvgFilePath(const QString& url, const QString& filePath) {
    m_hashSvgFilePath.insert(KeyOf(url), filePath);
}

void CLxWebImageCacheMgr::Clear() {
    m_pixmapCache.clear();
    m_movieCache.clear();
    m_hashSvgFilePath.clear();
}

int CLxWebImageCacheMgr::GetPixmapCacheCost(const QPixmap& pixmap) {
    // 32-bit arithmetic on purpose: the product wraps for huge pictures (done unsigned, so the
    // wrap is defined) and is read back as a signed 32-bit value before dividing.
    const uint32_t u32Product = uint32_t(pixmap.width()) * uint32_t(pixmap.height()) * uint32_t(pixmap.depth());
    return static_cast<int32_t>(u32Product) / 8;
}

int CLxWebImageCacheMgr::GetMovieCacheCost(QMovie* movie) {
    if (!movie)
        return 0;
    if (movie->cacheMode() == QMovie::CacheAll) {
        uint32_t u32Sum = 0;
        for (int i = 0; i < movie->frameCount(); ++i) {
            movie->jumpToFrame(i);
            u32Sum += uint32_t(GetPixmapCacheCost(movie->currentPixmap()));
        }
        return static_cast<int32_t>(u32Sum);
    }
    QPixmap frame = movie->currentPixmap();
    if (frame.isNull() && movie->frameCount() > 0) {
        movie->jumpToFrame(0);
        frame = movie->currentPixmap();
    }
    return GetPixmapCacheCost(frame);
}
