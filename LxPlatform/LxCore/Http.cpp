#include <LxCore/Http.h>

#include <LxCore/FrameWork.h>
#include <LxCore/LxCoreLog_p.h>
#include <LxCore/Post.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHttpMultiPart>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QThread>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <map>
#include <memory>

namespace core {
namespace network {
namespace http {
namespace {

struct Running {
    QPointer<QNetworkReply> pReply;
    std::unique_ptr<QFile> pPartFile;
    QString strTarget;
    DoneCallback onDone;
    ProgressCallback onProgress;
    bool bWriteFailed = false;
    QString strWriteError;  // why the part file could not be written
    qint64 i64MaxBodyBytes = 0;
    bool bTooLarge = false;
    qint64 i64Sent = 0;      // newest upload progress
    qint64 i64Received = 0;  // newest download progress
};

std::atomic<uint64_t> g_nextId{1};
std::atomic<uint64_t> g_u64Requests{0};
std::atomic<uint64_t> g_u64BytesSent{0};
std::atomic<uint64_t> g_u64BytesReceived{0};

void AddTraffic(const Running& run) {
    g_u64BytesSent += uint64_t(qMax<qint64>(0, run.i64Sent));
    g_u64BytesReceived += uint64_t(qMax<qint64>(0, run.i64Received));
}
// GUI thread only. Made on first use, so loading the library runs no constructor.
std::map<RequestId, std::shared_ptr<Running>>& RunningRequests() {
    static std::map<RequestId, std::shared_ptr<Running>> s_mapRunning;
    return s_mapRunning;
}

QNetworkAccessManager* Manager() {
    static QPointer<QNetworkAccessManager> s_nam;
    if (!s_nam)
        s_nam = new QNetworkAccessManager(QCoreApplication::instance());
    return s_nam;
}

QHttpMultiPart* BuildMultipart(const Request& req, QString& error) {
    auto* multi = new QHttpMultiPart(QHttpMultiPart::FormDataType);
    for (const auto& field : req.formFields) {
        QHttpPart part;
        part.setHeader(QNetworkRequest::ContentDispositionHeader,
                       QStringLiteral("form-data; name=\"%1\"").arg(field.first));
        part.setBody(field.second);
        multi->append(part);
    }
    for (const FileField& ff : req.fileFields) {
        if (ff.strFilePath.isEmpty()) {
            QHttpPart part;
            part.setHeader(QNetworkRequest::ContentTypeHeader,
                           ff.contentType.isEmpty() ? QByteArray("application/octet-stream") : ff.contentType);
            part.setHeader(QNetworkRequest::ContentDispositionHeader,
                           QStringLiteral("form-data; name=\"%1\"; filename=\"%2\"").arg(ff.strName, ff.strFileName));
            part.setBody(ff.content);
            multi->append(part);
            continue;
        }
        auto* file = new QFile(ff.strFilePath, multi);
        if (!file->open(QIODevice::ReadOnly)) {
            error = QStringLiteral("cannot open %1").arg(ff.strFilePath);
            delete multi;
            return nullptr;
        }
        FrameWork::AddIORead(ff.strFilePath, uint64_t(file->size()));
        const QString name = ff.strFileName.isEmpty() ? QFileInfo(ff.strFilePath).fileName() : ff.strFileName;
        QHttpPart part;
        part.setHeader(QNetworkRequest::ContentTypeHeader,
                       ff.contentType.isEmpty() ? QByteArray("application/octet-stream") : ff.contentType);
        part.setHeader(QNetworkRequest::ContentDispositionHeader,
                       QStringLiteral("form-data; name=\"%1\"; filename=\"%2\"").arg(ff.strName, name));
        part.setBodyDevice(file);
        multi->append(part);
    }
    return multi;
}

// `reason`: errno of the failed write. A short write (the disk filled midway) sets no error on
// the file; the refused write behind it left its reason there.
void MarkWriteFailed(Running& run, int reason) {
    run.bWriteFailed = true;
    run.strWriteError = run.pPartFile->error() != QFileDevice::NoError || reason == 0
                            ? run.pPartFile->errorString()
                            : QString::fromLocal8Bit(std::strerror(reason));
}

// Appends a piece of the body to the part file; false (and the request marked) when it failed.
bool WriteToPartFile(Running& run, const QByteArray& chunk) {
    errno = 0;
    if (chunk.isEmpty() || run.pPartFile->write(chunk) == chunk.size())
        return true;
    MarkWriteFailed(run, errno);
    return false;
}

void Finish(RequestId id) {
    auto it = RunningRequests().find(id);
    if (it == RunningRequests().end())
        return;
    std::shared_ptr<Running> run = it->second;
    RunningRequests().erase(it);
    QNetworkReply* reply = run->pReply;
    if (!reply)
        return;
    reply->deleteLater();
    AddTraffic(*run);

    Response resp;
    resp.i32NetworkError = int(reply->error());
    resp.i32HttpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    resp.strError = reply->errorString();
    for (const auto& pair : reply->rawHeaderPairs())
        resp.headers.insert(pair.first.toLower(), pair.second);
    if (run->pPartFile) {
        if (!run->bWriteFailed)
            WriteToPartFile(*run, reply->readAll());
        // The last buffered bytes go out here: on a full disk this is where the failure shows.
        errno = 0;
        if (!run->bWriteFailed && !run->pPartFile->flush())
            MarkWriteFailed(*run, errno);
        run->pPartFile->close();
        const QString part = run->pPartFile->fileName();
        if (run->bTooLarge) {
            resp.i32NetworkError = int(QNetworkReply::UnknownContentError);
            resp.strError = QStringLiteral("body over %1 bytes").arg(run->i64MaxBodyBytes);
        } else if (run->bWriteFailed) {
            // Whatever the reply says (it was aborted when the write failed), the file is not there.
            resp.i32NetworkError = int(QNetworkReply::UnknownContentError);
            resp.strError = QStringLiteral("cannot write %1: %2").arg(part, run->strWriteError);
        }
        if (resp.Ok()) {
            QFile::remove(run->strTarget);
            if (QFile::rename(part, run->strTarget)) {
                resp.strSavedFile = run->strTarget;
                FrameWork::AddIOWrite(run->strTarget, uint64_t(QFileInfo(run->strTarget).size()));
            } else {
                resp.i32NetworkError = int(QNetworkReply::UnknownContentError);
                resp.strError = QStringLiteral("cannot move %1 into place").arg(part);
                QFile::remove(part);
            }
        } else {
            QFile::remove(part);
        }
    } else if (run->bTooLarge) {
        resp.i32NetworkError = int(QNetworkReply::UnknownContentError);
        resp.strError = QStringLiteral("body over %1 bytes").arg(run->i64MaxBodyBytes);
    } else {
        resp.body = reply->readAll();
    }
    if (!resp.Ok())
        LXCORE_LOG_WARN("http {} failed: network error {}, status {}, {}", reply->url().toString(),
                        resp.i32NetworkError, resp.i32HttpStatus, resp.strError);
    if (run->onDone)
        run->onDone(resp);
}

void StartOnMain(RequestId id, const Request& req, DoneCallback onDone, ProgressCallback onProgress) {
    auto run = std::make_shared<Running>();
    run->onDone = std::move(onDone);
    run->onProgress = std::move(onProgress);
    run->i64MaxBodyBytes = req.i64MaxBodyBytes;

    const QUrl url(req.strUrl);
    QNetworkRequest nreq(url);
    nreq.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    if (req.i32TimeoutMs > 0)
        nreq.setTransferTimeout(req.i32TimeoutMs);
    for (auto it = req.headers.begin(); it != req.headers.end(); ++it)
        nreq.setRawHeader(it.key(), it.value());

    auto fail = [&](const QString& why) {
        LXCORE_LOG_WARN("http {} not started: {}", req.strUrl, why);
        Response resp;
        resp.i32NetworkError = int(QNetworkReply::ProtocolInvalidOperationError);
        resp.strError = why;
        DoneCallback cb = run->onDone;
        // Answer asynchronously like every other outcome, so callers never see re-entrancy.
        core::post::ToMain([cb, resp] {
            if (cb)
                cb(resp);
        });
    };
    if (!url.isValid() || url.scheme().isEmpty())
        return fail(QStringLiteral("invalid url"));

    if (!req.strSaveToFile.isEmpty()) {
        QDir().mkpath(QFileInfo(req.strSaveToFile).absolutePath());
        run->strTarget = req.strSaveToFile;
        run->pPartFile = std::make_unique<QFile>(req.strSaveToFile + QStringLiteral(".part"));
        if (!run->pPartFile->open(QIODevice::WriteOnly | QIODevice::Truncate))
            return fail(QStringLiteral("cannot write %1").arg(run->pPartFile->fileName()));
    }

    QNetworkReply* reply = nullptr;
    if (!req.formFields.isEmpty() || !req.fileFields.isEmpty()) {
        QString error;
        QHttpMultiPart* multi = BuildMultipart(req, error);
        if (!multi)
            return fail(error);
        reply = Manager()->sendCustomRequest(nreq, req.method == "GET" ? QByteArray("POST") : req.method, multi);
        multi->setParent(reply);
    } else if (req.method == "GET") {
        reply = Manager()->get(nreq);
    } else if (req.method == "HEAD") {
        reply = Manager()->head(nreq);
    } else {
        reply = Manager()->sendCustomRequest(nreq, req.method, req.body);
    }
    run->pReply = reply;
    RunningRequests()[id] = run;

    QObject::connect(reply, &QNetworkReply::readyRead, reply, [id] {
        auto it = RunningRequests().find(id);
        if (it == RunningRequests().end() || !it->second->pPartFile || !it->second->pReply)
            return;
        const std::shared_ptr<Running> run = it->second;
        if (!run->bWriteFailed && !WriteToPartFile(*run, run->pReply->readAll()) && run->pReply)
            run->pReply->abort();  // nowhere to put the rest: finishes the request, Finish() reports it
    });
    QObject::connect(reply, &QNetworkReply::downloadProgress, reply, [id](qint64 rec, qint64 total) {
        auto it = RunningRequests().find(id);
        if (it == RunningRequests().end())
            return;
        const std::shared_ptr<Running> run = it->second;
        run->i64Received = rec;
        if (run->i64MaxBodyBytes > 0 && (rec > run->i64MaxBodyBytes || total > run->i64MaxBodyBytes)) {
            if (!run->bTooLarge && run->pReply) {
                run->bTooLarge = true;
                run->pReply->abort();  // finishes the request: Finish() reports the bound
            }
            return;
        }
        if (run->onProgress)
            run->onProgress(rec, total);
    });
    QObject::connect(reply, &QNetworkReply::uploadProgress, reply, [id](qint64 sent, qint64) {
        auto it = RunningRequests().find(id);
        if (it != RunningRequests().end())
            it->second->i64Sent = sent;
    });
    QObject::connect(reply, &QNetworkReply::finished, reply, [id] { Finish(id); });
}

bool OnMainThread() {
    return QCoreApplication::instance() && QThread::currentThread() == QCoreApplication::instance()->thread();
}

}  // namespace

FileField CreateFileField(const QString& strName, const QString& strFileName, const QByteArray& content,
                          const QByteArray& contentType) {
    FileField ff;
    ff.strName = strName;
    ff.strFileName = strFileName;
    ff.content = content;
    ff.contentType = contentType;
    return ff;
}

RequestId Start(const Request& request, DoneCallback onDone, ProgressCallback onProgress) {
    const RequestId id = g_nextId++;
    ++g_u64Requests;
    if (OnMainThread()) {
        StartOnMain(id, request, std::move(onDone), std::move(onProgress));
    } else {
        core::post::ToMain([id, request, onDone = std::move(onDone), onProgress = std::move(onProgress)] {
            StartOnMain(id, request, onDone, onProgress);
        });
    }
    return id;
}

bool Cancel(RequestId id) {
    LXCORE_ASSERT_MAIN_THREAD();
    auto it = RunningRequests().find(id);
    if (it == RunningRequests().end())
        return false;
    std::shared_ptr<Running> run = it->second;
    RunningRequests().erase(it);
    AddTraffic(*run);
    if (run->pPartFile) {
        run->pPartFile->close();
        QFile::remove(run->pPartFile->fileName());
    }
    if (run->pReply) {
        run->pReply->disconnect();
        run->pReply->abort();
        run->pReply->deleteLater();
    }
    return true;
}

int RunningCount() { return int(RunningRequests().size()); }

uint64_t TotalRequestCount() { return g_u64Requests.load(); }
uint64_t TotalBytesSent() { return g_u64BytesSent.load(); }
uint64_t TotalBytesReceived() { return g_u64BytesReceived.load(); }

}  // namespace http
}  // namespace network
}  // namespace core
