#pragma once
// CLxWebAnimatedImageWidget: shows an animated picture (GIF, multi-frame WebP) through a QMovie.
//
// Load plays a movie of the widget's own on the file's bytes (read once, checked, played from
// memory: no descriptor stays open per movie) and puts a movie for the URL into the image cache; when the cache's
// movie for the URL was made from that very file (same path, size and times), Load plays it like LoadCache instead,
// so widgets hearing of one download together decode it once. LoadCache plays the
// cache's movie, which every widget showing that URL shares: a widget never stops, seeks, re-parents, rescales or
// deletes a shared movie; Clear() and the destructor only disconnect from it, so the other widgets keep animating.
// Shared movies run while at least one widget shows them: the first viewer starts (or resumes) one, the last one to
// leave pauses it so that cached movies nobody sees cost no CPU. A paused movie keeps its current frame and goes on
// from it when the next viewer comes (rather than restarting from the first frame).
//
// The cache may delete a shared movie (eviction, a newer entry for the URL, Clear()). The widget
// keeps painting the last frame and, once the cache is done (posted, never from inside the cache's
// own operation), moves on to the cache's newer movie for the URL if there is one, else to a movie
// of its own on the same file, so it keeps animating.

#include <LxUIKit/WebImage/LxImageWidgetBase.h>

#include <QMovie>
#include <QPointer>

class CLxWebAnimatedImageWidget : public CLxImageWidgetBase {
    Q_OBJECT
public:
    explicit CLxWebAnimatedImageWidget(QWidget* parent = nullptr);
    ~CLxWebAnimatedImageWidget() override;

    bool Load(const QString& url, const QString& filePath) override;
    bool LoadCache(const QString& url) override;
    void Clear() override;
    QSize GetImageSize() const override;
    void Copy() override;
    QPixmap GetCurPixmap() override;

    QMovie* GetMovie() const { return m_pMovie; }
    bool IsMovieShared() const { return m_pMovie && !m_bOwnsMovie; }

    // How many widgets show `movie` as a shared movie now.
    static int SharedViewerCount(QMovie* movie);

private:
    void ShowOwnMovie(const QString& filePath, const QByteArray& data, const QByteArray& format);
    void ShowSharedMovie(QMovie* movie);
    void OnSharedMovieDestroyed();
    void Reattach();
    void OnFrameChanged();

    QPointer<QMovie> m_pMovie;
    bool m_bOwnsMovie = false;
    QString m_strUrl;       // cache key of the picture shown
    QString m_strFilePath;  // file of the picture shown
    QMetaObject::Connection m_destroyedConnection;
    QPixmap m_lastFrame;  // painted while a vanished shared movie is being replaced
    QSize m_lastFrameSize;
    bool m_bReattachPending = false;
};
