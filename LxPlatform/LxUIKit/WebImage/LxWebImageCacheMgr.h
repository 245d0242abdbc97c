#pragma once
// CLxWebImageCacheMgr: the process-wide memory cache of decoded web images.
//
// Three kinds of entry, keyed by the 64-bit hash of the URL (core::str_conv::HashStrToUInt64 of
// its UTF-8 bytes; the URL itself is not kept, colliding URLs share an entry):
// - static pictures: owned QPixmaps in a cost-bounded LRU (QCache), cost = decoded bytes;
// - animated pictures: owned QMovies in a second such LRU, cost = bytes of one frame (or of every
//   frame for a movie that caches all of them);
// - SVG pictures: only the path of the downloaded file (unbounded).
//
// Costs are computed in 32-bit signed arithmetic, width x height x depth wrapping for very large
// pictures before the division by 8; an object costlier than the limit is not stored (and an older
// entry of the same key is removed all the same). Lookups that hit move the entry to the head of
// the LRU; GetCacheType does not.
//
// Movies play from memory: a cached movie holds its file's bytes (GIF and WebP files are small next
// to their decoded frames) and no open file, so the number of open descriptors does not grow with
// the cache. The bytes are not part of a movie's cost (that stays one frame); they are shared with
// the widget that loaded them. MovieFilePath() tells which file a movie was made from.
//
// Pixmaps are handed out by value (implicitly shared). Movies are handed out by pointer and stay
// the cache's: every widget that shows a URL shares its one movie and must never stop, seek,
// re-parent or delete it. A movie may be deleted by the cache (eviction, replacement, Clear());
// holders watch it through QPointer / QObject::destroyed.
//
// GUI thread only; nothing is locked and nothing is written to disk.

#include <LxUIKit/LxUIKitExport.h>
#include <QCache>
#include <QHash>
#include <QMovie>
#include <QPixmap>
#include <QString>

#include <cstdint>

class LXUIKIT_EXPORT CLxWebImageCacheMgr {
public:
    enum CacheType { CacheType_None = 0, CacheType_Pixmap = 1, CacheType_Movie = 2, CacheType_Svg = 3 };

    static CLxWebImageCacheMgr& GetInstance();

    // 0 not cached, 1 pixmap, 2 movie, 3 SVG path; the SVG table is asked first, then pixmaps,
    // then movies.
    int GetCacheType(const QString& url) const;

    QPixmap GetPixmap(const QString& url);
    void InsertPixmap(const QString& url, const QPixmap& pixmap);

    // The cache keeps ownership; null when absent.
    QMovie* GetMovie(const QString& url);
    // Never stores `movie` itself: a new movie is made from the same file (format detected from
    // the content; the bytes are shared with `movie` when it plays from memory) and stored.
    void InsertMovie(const QString& url, const QMovie& movie);

    // A movie playing `data` (the content of `filePath`) from memory, with no file left open.
    static QMovie* NewMemoryMovie(const QString& filePath, const QByteArray& data, const QByteArray& format,
                                  QObject* parent = nullptr);
    // The file a movie was made from: its own file name, or the one given to NewMemoryMovie.
    static QString MovieFilePath(const QMovie* movie);

    QString GetSvgFilePath(const QString& url) const;
    void InsertSvgFilePath(const QString& url, const QString& filePath);

    // Deletes every pixmap and movie and forgets every SVG path.
    void Clear();

    static int GetPixmapCacheCost(const QPixmap& pixmap);
    static int GetMovieCacheCost(QMovie* movie);

    // Introspection for tests, tools and the gallery.
    int PixmapTotalCost() const { return m_pixmapCache.totalCost(); }
    int MovieTotalCost() const { return m_movieCache.totalCost(); }
    int PixmapCount() const { return m_pixmapCache.count(); }
    int MovieCount() const { return m_movieCache.count(); }
    int SvgCount() const { return m_hashSvgFilePath.count(); }
    static int MaxCacheCost() { return m_ki32MaxCacheCost; }
    // The key of a URL: core::str_conv::HashStrToUInt64 of its UTF-8 bytes.
    static unsigned long KeyOf(const QString& url);

    CLxWebImageCacheMgr(const CLxWebImageCacheMgr&) = delete;
    CLxWebImageCacheMgr& operator=(const CLxWebImageCacheMgr&) = delete;

private:
    CLxWebImageCacheMgr();
    ~CLxWebImageCacheMgr();

    QCache<unsigned long, QPixmap> m_pixmapCache;
    QCache<unsigned long, QMovie> m_movieCache;
    QHash<unsigned long, QString> m_hashSvgFilePath;
    static constexpr int32_t m_ki32MaxCacheCost = 1000 * 1024 * 1024;
};
