#pragma once
// A small stand-in for the image translation service, for the gallery's offline demonstration. It
// listens on 127.0.0.1 (any free port), answers POST /image/translate like the real service:
// it reads the uploaded picture from the multipart field "image", and answers made-up
// translations for the caption bands the gallery's sample posters carry (at fixed fractions of the
// picture), in the language the request names (X-Kora-Client-Lang). Pictures too small to carry a
// caption get an answer without records.

#include <QObject>
#include <QString>
#include <QTcpServer>

class GalleryTranslateService : public QObject {
public:
    // Starts the one service of the process (once) and points the kit's translation task at it for
    // both editions. Answers the address, empty when it could not listen.
    static QString EnsureStarted();
    // Caption bands of the sample posters, as fractions of the picture (x, y, width, height).
    static QRectF TitleBand();
    static QRectF NoteBand();
    int RequestCount() const { return m_i32Requests; }
    static GalleryTranslateService* instance();

private:
    GalleryTranslateService() = default;
    void OnReadable(class QTcpSocket* socket);

    QTcpServer m_server;
    int m_i32Requests = 0;
};
