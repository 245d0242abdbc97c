#pragma once
// CLxImagePreviewTranslateTask: translates the text inside one picture through the image
// translation service and paints the translations over the picture.
//
// RequestTranslate(key, picture, requestId, index, callback):
//   - a fresh cached answer for the key in the current target language is composed and answered
//     at once (no request);
//   - otherwise the picture is encoded for upload on a worker thread (PNG when it is at most
//     4,194,304 bytes, else the first JPEG from quality 100 down in steps of 2 that is strictly
//     smaller; a large photo takes seconds) and posted as the
//     multipart file field "image" to "<service>/image/translate" with the client headers;
//   - the answer is checked step by step (every refusal is logged and ends in status 1, or 2 for a
//     well-formed answer without usable text), stored in the cache, and the translations are painted
//     over the picture: each region filled with the colour of its top-left pixel, the text in the
//     largest font token that fits, white on mid-grey and the inverse colour elsewhere, centred.
// The callback is called exactly once per request (status 0 success, 1 failure, 2 no result,
// 3 cancelled), unless the request is abandoned: a new request, AbandonInFlightRequest() and the
// destructor abandon silently. At most one request is in flight per task. GUI thread only.
//
// The answer cache is process-wide: per picture key, one entry per target language, each fresh
// for 24 hours of server time; expired entries are dropped when their key is looked up or updated.
//
// The service address is deployment configuration, one per product edition
// (core::environment::IsInternationalEdition()), set by the host at run time with
// SetServiceAddress(). Until it is set the address is empty and every request fails cleanly with
// status 1 and the log line "StartRequest returns 0, url=".

#include <LxCore/SafeFunction.h>
#include <LxUIKit/ImagePreview/LxImagePreviewDefine.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QByteArray>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <QVector>

#include <cstdint>
#include <memory>
#include <string>

class LXUIKIT_EXPORT CLxImagePreviewTranslateTask : public QObject {
    Q_OBJECT
public:
    using Callback = core::CSafeFunction<void(unsigned long, unsigned int, ImageTranslateResult)>;

    struct RequestInfo {
        QString strKey;
        QPixmap source;
        unsigned long u64RequestId = 0;
        unsigned int u32Index = 0;
        Callback callback;
        QByteArray uploadBytes;
    };

    static constexpr qint64 kUploadBound = 4194304;
    static constexpr int64_t kCacheLifetimeMs = 86400000;

    explicit CLxImagePreviewTranslateTask(QObject* parent);
    ~CLxImagePreviewTranslateTask() override;

    void RequestTranslate(const QString& key, const QPixmap& source, unsigned long requestId, unsigned int index,
                          Callback callback);
    bool HasValidCache(const QString& key) const;
    QPixmap GetCachedTranslatedPixmap(const QString& key, const QPixmap& source) const;
    // Stops the request and calls its callback with status 3.
    void CancelInFlightRequest();
    // Stops the request and forgets it; its callback is never called.
    void AbandonInFlightRequest();
    bool IsRequestInFlight() const { return m_spInFlight != nullptr; }

    // Empty for a null picture, a failed encoding or a picture too large even as JPEG quality 0.
    static QByteArray PreprocessToUploadByteArray(const QPixmap& pixmap);
    // Trimmed and lower-cased; the usual spellings of Chinese (simplified, traditional), English,
    // Japanese and French map to "sc", "tc", "en", "ja", "fr".
    static QString NormalizeTargetLanguage(const QString& language);
    static QString CurrentTargetLanguage();
    // The picture with every record's translation painted over it (see above).
    static QPixmap ComposeTranslatedPixmap(const QPixmap& source, const QVector<ImageRecord>& records);

    // Service address of one edition: scheme ("https"), host and port (<= 0: the scheme's default).
    // An empty host clears it.
    static void SetServiceAddress(bool bInternationalEdition, const QString& scheme, const QString& host, int port);
    // "<scheme>://<host>[:port]" of the current edition; empty when not configured.
    static QString GetServiceUrl();
    // Empties the process-wide answer cache (tests, and hosts on log-out).
    static void ClearCache();

private:
    void OnUploadEncoded(uint64_t u64Sequence, const QByteArray& bytes);
    void StartHttpTranslate(const std::shared_ptr<RequestInfo>& spInfo, const std::string& url);
    void OnHttpAnswer(uint64_t u64HttpId, int i32NetworkError, int i32HttpStatus, const QByteArray& body);
    // Clears the in-flight state and calls its callback (after the state is clear, so the callback
    // may start the next request).
    void Finish(const std::shared_ptr<RequestInfo>& spInfo, int i32Status, const QPixmap& pixmap);

    std::shared_ptr<RequestInfo> m_spInFlight;
    uint64_t m_u64HttpId = 0;
    uint64_t m_u64EncodeSequence = 0;  // the latest request whose upload is being encoded
};
