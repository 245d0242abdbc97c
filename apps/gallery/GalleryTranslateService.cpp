#include "GalleryTranslateService.h"

#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask.h>

#include <QHostAddress>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QTimer>

namespace {

constexpr int kMaxRequestBytes = 8 * 1024 * 1024;

// The picture's bytes from a multipart body: the part whose disposition names the field "image".
QByteArray ImageField(const QByteArray& head, const QByteArray& body) {
    const QRegularExpression re(QStringLiteral("boundary=\"?([^\";\\r\\n]+)"));
    const QRegularExpressionMatch m = re.match(QString::fromLatin1(head));
    if (!m.hasMatch())
        return QByteArray();
    const QByteArray boundary = "--" + m.captured(1).toLatin1();
    int from = 0;
    while ((from = body.indexOf(boundary, from)) >= 0) {
        from += boundary.size();
        const int headEnd = body.indexOf("\r\n\r\n", from);
        if (headEnd < 0)
            break;
        const QByteArray partHead = body.mid(from, headEnd - from);
        const int next = body.indexOf("\r\n" + boundary, headEnd + 4);
        if (next < 0)
            break;
        if (partHead.contains("name=\"image\""))
            return body.mid(headEnd + 4, next - headEnd - 4);
        from = next;
    }
    return QByteArray();
}

QJsonObject Record(const QSize& size, const QRectF& band, const QString& text) {
    return QJsonObject{{QStringLiteral("x"), qRound(band.x() * size.width())},
                       {QStringLiteral("y"), qRound(band.y() * size.height())},
                       {QStringLiteral("width"), qRound(band.width() * size.width())},
                       {QStringLiteral("height"), qRound(band.height() * size.height())},
                       {QStringLiteral("target_text"), text}};
}

QByteArray Answer(const QByteArray& head, const QByteArray& body) {
    const QImage image = QImage::fromData(ImageField(head, body));
    if (image.isNull())
        return R"({"code":40001,"message":"no readable image in the field \"image\""})";
    const bool bEnglish = head.contains("X-Kora-Client-Lang: en");
    QJsonObject data{{QStringLiteral("target_language"), bEnglish ? QStringLiteral("en-US") : QStringLiteral("zh-CN")}};
    QJsonArray records;
    if (image.width() >= 120 && image.height() >= 80) {
        records.append(Record(image.size(), GalleryTranslateService::TitleBand(),
                              bEnglish ? QStringLiteral("Norvale Dynamics · quarterly results")
                                       : QStringLiteral("诺瓦尔动力 · 季度业绩")));
        records.append(Record(image.size(), GalleryTranslateService::NoteBand(),
                              bEnglish ? QStringLiteral("Revenue up 12%, new plant in Vestmark")
                                       : QStringLiteral("营收增长 12%，韦斯特马克新厂投产")));
    }
    data.insert(QStringLiteral("image_records"), records);
    return QJsonDocument(QJsonObject{{QStringLiteral("code"), 0},
                                     {QStringLiteral("message"), QStringLiteral("ok")},
                                     {QStringLiteral("data"), data}})
        .toJson(QJsonDocument::Compact);
}

}  // namespace

GalleryTranslateService* GalleryTranslateService::instance() {
    static GalleryTranslateService* s = new GalleryTranslateService;  // lives for the process
    return s;
}

QRectF GalleryTranslateService::TitleBand() { return QRectF(0.06, 0.08, 0.88, 0.16); }
QRectF GalleryTranslateService::NoteBand() { return QRectF(0.10, 0.72, 0.80, 0.12); }

QString GalleryTranslateService::EnsureStarted() {
    GalleryTranslateService* self = instance();
    if (!self->m_server.isListening()) {
        if (!self->m_server.listen(QHostAddress::LocalHost, 0))
            return QString();
        QObject::connect(&self->m_server, &QTcpServer::newConnection, self, [self] {
            while (QTcpSocket* socket = self->m_server.nextPendingConnection()) {
                QObject::connect(socket, &QTcpSocket::readyRead, self, [self, socket] { self->OnReadable(socket); });
                QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            }
        });
        const int port = self->m_server.serverPort();
        CLxImagePreviewTranslateTask::SetServiceAddress(false, QStringLiteral("http"), QStringLiteral("127.0.0.1"),
                                                        port);
        CLxImagePreviewTranslateTask::SetServiceAddress(true, QStringLiteral("http"), QStringLiteral("127.0.0.1"),
                                                        port);
    }
    return QStringLiteral("http://127.0.0.1:%1").arg(self->m_server.serverPort());
}

void GalleryTranslateService::OnReadable(QTcpSocket* socket) {
    if (socket->property("answered").toBool())
        return;
    QByteArray data = socket->property("data").toByteArray() + socket->readAll();
    if (data.size() > kMaxRequestBytes) {
        socket->abort();
        return;
    }
    socket->setProperty("data", data);
    const int headEnd = data.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return;
    const QByteArray head = data.left(headEnd);
    int length = 0;
    for (const QByteArray& line : head.split('\n'))
        if (line.toLower().startsWith("content-length:"))
            length = line.mid(15).trimmed().toInt();
    if (data.size() < headEnd + 4 + length)
        return;
    socket->setProperty("answered", true);
    ++m_i32Requests;
    QByteArray status = "200 OK";
    QByteArray reply;
    if (head.startsWith("POST /image/translate "))
        reply = Answer(head, data.mid(headEnd + 4, length));
    else
        status = "404 Not Found";
    // A short pause, so the scan line of the preview is seen.
    QPointer<QTcpSocket> guard(socket);
    QTimer::singleShot(600, this, [guard, status, reply] {
        if (!guard)
            return;
        guard->write("HTTP/1.1 " + status + "\r\nContent-Type: application/json\r\nContent-Length: " +
                     QByteArray::number(reply.size()) + "\r\nConnection: close\r\n\r\n" + reply);
        guard->disconnectFromHost();
    });
}
