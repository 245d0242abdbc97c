#pragma once
// HTTP over QNetworkAccessManager. Start() may be called from any thread; the request runs on the
// GUI thread and its callbacks are called there. A cancelled request never calls back.
//
// Multipart: when formFields or fileFields are given the body is multipart/form-data built from
// them (files are streamed from disk, not loaded whole; a field with no path sends its in-memory
// bytes). With saveToFile the body is written to "<saveToFile>.part" while it arrives and renamed
// into place on success, so a failed download never leaves a partial file under the final name.
// A body that cannot be written (a full disk) aborts the request, which then fails with
// QNetworkReply::UnknownContentError and "cannot write <part file>: <reason>"; the part file is
// removed.

#include <LxCore/LxCoreExport.h>
#include <QByteArray>
#include <QList>
#include <QMap>
#include <QPair>
#include <QString>

#include <cstdint>
#include <functional>

namespace core {
namespace network {
namespace http {

struct LXCORE_EXPORT FileField {
    QString strName;         // form field name
    QString strFilePath;     // file to send
    QString strFileName;     // file name announced to the server (default: the file's name)
    QByteArray contentType;  // default application/octet-stream
    QByteArray content{};    // sent instead of a file when strFilePath is empty
};

// A file field whose bytes are already in memory (an encoded picture, for example).
LXCORE_EXPORT FileField CreateFileField(const QString& strName, const QString& strFileName, const QByteArray& content,
                                        const QByteArray& contentType = QByteArray());

struct LXCORE_EXPORT Request {
    Request() = default;
    Request(const QString& url) : strUrl(url) {}  // NOLINT: a GET of one URL reads best as {url}

    QString strUrl;
    QByteArray method = "GET";
    QMap<QByteArray, QByteArray> headers;
    QByteArray body;
    QList<QPair<QString, QByteArray>> formFields;
    QList<FileField> fileFields;
    int i32TimeoutMs = 30000;
    QString strSaveToFile;
    // Bound on the response body (0: none). A longer body is aborted as soon as it passes the
    // bound and fails with QNetworkReply::UnknownContentError.
    qint64 i64MaxBodyBytes = 0;
};

struct LXCORE_EXPORT Response {
    int i32NetworkError = 0;  // QNetworkReply::NetworkError; 0 is success
    int i32HttpStatus = 0;    // 0 when no HTTP answer came
    QString strError;
    QByteArray body;  // empty when saved to a file
    QString strSavedFile;
    QMap<QByteArray, QByteArray> headers;
    bool Ok() const {
        return i32NetworkError == 0 && (i32HttpStatus == 0 || (i32HttpStatus >= 200 && i32HttpStatus < 300));
    }
};

using RequestId = uint64_t;
using DoneCallback = std::function<void(const Response&)>;
using ProgressCallback = std::function<void(qint64 received, qint64 total)>;

LXCORE_EXPORT RequestId Start(const Request& request, DoneCallback onDone, ProgressCallback onProgress = {});
// Returns true when a running request was cancelled.
LXCORE_EXPORT bool Cancel(RequestId id);
LXCORE_EXPORT int RunningCount();

// Totals since process start, readable from any thread (the application listener charts them):
// requests started, request body bytes sent and response body bytes received (headers excluded;
// a cancelled request counts what it had moved so far).
LXCORE_EXPORT uint64_t TotalRequestCount();
LXCORE_EXPORT uint64_t TotalBytesSent();
LXCORE_EXPORT uint64_t TotalBytesReceived();

}  // namespace http
}  // namespace network
}  // namespace core
