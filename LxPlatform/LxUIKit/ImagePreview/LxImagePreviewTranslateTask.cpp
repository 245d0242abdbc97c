#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask_p.h>

#include <LxCore/Environment.h>
#include <LxCore/Http.h>
#include <LxCore/Post.h>
#include <LxCore/TimeDate.h>
#include <LxStdUI/FontToken.h>
#include <LxStdUI/LWidgetUtil.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QBuffer>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QPointer>
#include <QThread>
#include <QUrl>

#include <json/json.h>

#include <atomic>
#include <cmath>
#include <memory>
#include <sstream>

namespace {

const char* const kTranslatePath = "/image/translate";

// Process-wide answer cache: picture key -> one entry per target language. GUI thread only.
QHash<QString, QList<ImageRecordListCache>>& Cache() {
    static QHash<QString, QList<ImageRecordListCache>> s_hash;
    return s_hash;
}

struct ServiceAddress {
    QString strScheme;
    QString strHost;
    int i32Port = 0;
};
ServiceAddress& Address(bool bInternational) {
    static ServiceAddress s_addr[2];
    return s_addr[bInternational ? 1 : 0];
}

QByteArray Encode(const QImage& image, const char* format, int quality, bool* pOk) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly)) {
        *pOk = false;
        return QByteArray();
    }
    *pOk = image.save(&buffer, format, quality);
    return *pOk ? bytes : QByteArray();
}

}  // namespace

namespace lxuikit_translate {

bool IsFresh(const ImageRecordListCache& entry, int64_t now) {
    return now - entry.i64Time <= CLxImagePreviewTranslateTask::kCacheLifetimeMs;
}

int ParseTranslateHttpBody(const QByteArray& body, QString& strTargetLanguage, QVector<ImageRecord>& records) {
    records.clear();
    strTargetLanguage.clear();
    if (body.isEmpty()) {
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, body is empty");
        return ImageTranslateResult::Failed;
    }
    Json::CharReaderBuilder builder;
    builder["collectComments"] = false;
    builder["stackLimit"] = 256;
    Json::Value root;
    std::string errors;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    bool parsed = false;
    try {
        parsed = reader->parse(body.constData(), body.constData() + body.size(), &root, &errors);
    } catch (const std::exception&) {
        parsed = false;  // jsoncpp throws past its nesting limit
    }
    if (!parsed) {
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, parse fails");
        return ImageTranslateResult::Failed;
    }
    if (!root.isObject()) {
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, root is not object");
        return ImageTranslateResult::Failed;
    }
    if (!root.isMember("code")) {
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, root has no code");
        return ImageTranslateResult::Failed;
    }
    const Json::Value& code = root["code"];
    if (!code.isInt()) {
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, code is not int");
        return ImageTranslateResult::Failed;
    }
    if (code.asInt() != 0) {
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, code is not 0");
        const Json::Value& message = root["message"];
        std::string text;
        if (message.isString())
            text = message.asString();
        else if (!message.isNull()) {
            Json::StreamWriterBuilder writer;
            writer["indentation"] = "";
            text = Json::writeString(writer, message);
        }
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, {}", text);
        return ImageTranslateResult::Failed;
    }
    const Json::Value& data = root["data"];
    if (!data.isObject()) {
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, data is not object");
        return ImageTranslateResult::Failed;
    }
    if (!data.isMember("target_language")) {
        LXUIKIT_LOG_INFO("ParseTranslateHttpBody is not success, data has not target_language");
        return ImageTranslateResult::NoResult;
    }
    const Json::Value& language = data["target_language"];
    if (!language.isString()) {
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, target_language is not string");
        return ImageTranslateResult::Failed;
    }
    if (!data.isMember("image_records")) {
        LXUIKIT_LOG_INFO("ParseTranslateHttpBody is not success, data has not image_records");
        return ImageTranslateResult::NoResult;
    }
    const Json::Value& list = data["image_records"];
    if (!list.isArray()) {
        LXUIKIT_LOG_WARN("ParseTranslateHttpBody fails, image_records is not array");
        return ImageTranslateResult::Failed;
    }
    if (list.empty()) {
        LXUIKIT_LOG_INFO("ParseTranslateHttpBody is not success, image_records is empty");
        return ImageTranslateResult::NoResult;
    }
    for (Json::ArrayIndex i = 0; i < list.size(); ++i) {
        const Json::Value& item = list[i];
        if (!item.isObject() || !item["x"].isInt() || !item["y"].isInt() || !item["width"].isInt() ||
            !item["height"].isInt() || !item["target_text"].isString())
            continue;
        ImageRecord record;
        record.x = item["x"].asInt();
        record.y = item["y"].asInt();
        record.width = item["width"].asInt();
        record.height = item["height"].asInt();
        record.strTargetText = QString::fromStdString(item["target_text"].asString());
        records.push_back(record);
    }
    if (records.isEmpty()) {
        LXUIKIT_LOG_INFO("ParseTranslateHttpBody is not success, image_records has no valid record");
        return ImageTranslateResult::NoResult;
    }
    strTargetLanguage = QString::fromStdString(language.asString());
    return ImageTranslateResult::Success;
}

QByteArray EncodeForUpload(const QPixmap& pixmap, qint64 i64Bound, int* pAttempts) {
    return EncodeForUpload(pixmap.isNull() ? QImage() : pixmap.toImage(), i64Bound, pAttempts);
}

QByteArray EncodeForUpload(const QImage& image, qint64 i64Bound, int* pAttempts) {
    if (pAttempts)
        *pAttempts = 0;
    if (image.isNull())
        return QByteArray();
    bool ok = false;
    QByteArray bytes = Encode(image, "PNG", -1, &ok);
    if (pAttempts)
        ++*pAttempts;
    if (!ok) {
        LXUIKIT_LOG_WARN("cannot encode the picture as PNG");
        return QByteArray();
    }
    if (bytes.size() <= i64Bound)
        return bytes;
    // JPEG has no alpha: flatten onto white so transparent parts do not turn black.
    QImage opaque = image;
    if (image.hasAlphaChannel()) {
        opaque = QImage(image.size(), QImage::Format_RGB32);
        opaque.setDevicePixelRatio(image.devicePixelRatio());
        opaque.fill(Qt::white);
        QPainter painter(&opaque);
        painter.drawImage(0, 0, image);
    }
    for (int quality = 100; quality >= 0; quality -= 2) {
        bytes = Encode(opaque, "JPEG", quality, &ok);
        if (pAttempts)
            ++*pAttempts;
        if (!ok) {
            LXUIKIT_LOG_WARN("cannot encode the picture as JPEG, quality {}", quality);
            return QByteArray();
        }
        if (bytes.size() < i64Bound)
            return bytes;
    }
    LXUIKIT_LOG_WARN("the picture stays at {} bytes or more even as JPEG quality 0", i64Bound);
    return QByteArray();
}

bool FindValidCache(const QString& key, ImageRecordListCache* pOut) {
    auto it = Cache().find(key);
    if (it == Cache().end())
        return false;
    const int64_t now = core::time_date::GetSvrTimeMillis();
    QList<ImageRecordListCache>& list = it.value();
    for (int i = list.size() - 1; i >= 0; --i)
        if (!IsFresh(list[i], now))
            list.removeAt(i);
    if (list.isEmpty()) {
        Cache().erase(it);
        return false;
    }
    const QString language = CLxImagePreviewTranslateTask::CurrentTargetLanguage();
    for (const ImageRecordListCache& entry : qAsConst(list)) {
        if (entry.strTargetLanguage == language) {
            if (pOut)
                *pOut = entry;
            return true;
        }
    }
    return false;
}

void UpdateCache(const QString& key, const ImageRecordListCache& entry) {
    QList<ImageRecordListCache>& list = Cache()[key];
    const int64_t now = core::time_date::GetSvrTimeMillis();
    for (int i = list.size() - 1; i >= 0; --i)
        if (!IsFresh(list[i], now) || list[i].strTargetLanguage == entry.strTargetLanguage)
            list.removeAt(i);
    list.append(entry);
}

int CachedLanguageCount(const QString& key) { return Cache().value(key).size(); }

}  // namespace lxuikit_translate

using namespace lxuikit_translate;

CLxImagePreviewTranslateTask::CLxImagePreviewTranslateTask(QObject* parent) : QObject(parent) {}

CLxImagePreviewTranslateTask::~CLxImagePreviewTranslateTask() { AbandonInFlightRequest(); }

QString CLxImagePreviewTranslateTask::NormalizeTargetLanguage(const QString& language) {
    QString lang = language.trimmed().toLower();
    if (lang == QLatin1String("zh-cn") || lang == QLatin1String("zh") || lang == QLatin1String("sc"))
        return QStringLiteral("sc");
    if (lang == QLatin1String("zh-hk") || lang == QLatin1String("zh-tw") || lang == QLatin1String("tc"))
        return QStringLiteral("tc");
    if (lang == QLatin1String("en-us") || lang == QLatin1String("en"))
        return QStringLiteral("en");
    if (lang == QLatin1String("ja-jp") || lang == QLatin1String("ja"))
        return QStringLiteral("ja");
    if (lang == QLatin1String("fr-fr") || lang == QLatin1String("fr"))
        return QStringLiteral("fr");
    return lang;
}

QString CLxImagePreviewTranslateTask::CurrentTargetLanguage() {
    return NormalizeTargetLanguage(core::environment::GetServerLanguage());
}

QByteArray CLxImagePreviewTranslateTask::PreprocessToUploadByteArray(const QPixmap& pixmap) {
    return EncodeForUpload(pixmap, kUploadBound);
}

void CLxImagePreviewTranslateTask::SetServiceAddress(bool bInternationalEdition, const QString& scheme,
                                                     const QString& host, int port) {
    ServiceAddress& addr = Address(bInternationalEdition);
    addr.strScheme = scheme.trimmed().isEmpty() ? QStringLiteral("https") : scheme.trimmed();
    addr.strHost = host.trimmed();
    addr.i32Port = port;
}

QString CLxImagePreviewTranslateTask::GetServiceUrl() {
    const ServiceAddress& addr = Address(core::environment::IsInternationalEdition());
    if (addr.strHost.isEmpty())
        return QString();
    QUrl url;
    url.setScheme(addr.strScheme);
    url.setHost(addr.strHost);
    if (addr.i32Port > 0)
        url.setPort(addr.i32Port);
    return url.isValid() ? url.toString() : QString();
}

void CLxImagePreviewTranslateTask::ClearCache() { Cache().clear(); }

bool CLxImagePreviewTranslateTask::HasValidCache(const QString& key) const { return FindValidCache(key, nullptr); }

QPixmap CLxImagePreviewTranslateTask::GetCachedTranslatedPixmap(const QString& key, const QPixmap& source) const {
    ImageRecordListCache entry;
    if (!FindValidCache(key, &entry))
        return QPixmap();
    return ComposeTranslatedPixmap(source, entry.records);
}

void CLxImagePreviewTranslateTask::RequestTranslate(const QString& key, const QPixmap& source, unsigned long requestId,
                                                    unsigned int index, Callback callback) {
    AbandonInFlightRequest();
    auto spInfo = std::make_shared<RequestInfo>();
    spInfo->strKey = key;
    spInfo->source = source;
    spInfo->u64RequestId = requestId;
    spInfo->u32Index = index;
    spInfo->callback = std::move(callback);

    ImageRecordListCache entry;
    if (FindValidCache(key, &entry)) {
        const QPixmap pixmap = ComposeTranslatedPixmap(source, entry.records);
        Finish(spInfo, pixmap.isNull() ? ImageTranslateResult::Failed : ImageTranslateResult::Success, pixmap);
        return;
    }
    // Encoding a large photo can take seconds (one JPEG quality after another): it runs on a
    // worker thread, and its result counts only while the request is still the one in flight.
    // The worker holds only the image and a sequence number: the request itself (its pixmap, its
    // callback) never leaves the GUI thread.
    m_spInFlight = spInfo;
    m_u64HttpId = 0;
    const uint64_t u64Sequence = ++m_u64EncodeSequence;
    const QImage image = source.isNull() ? QImage() : source.toImage();
    QPointer<CLxImagePreviewTranslateTask> guard(this);
    QThread* worker = QThread::create([guard, u64Sequence, image] {
        const QByteArray bytes = EncodeForUpload(image, kUploadBound);
        core::post::ToMain([guard, u64Sequence, bytes] {
            if (guard)
                guard->OnUploadEncoded(u64Sequence, bytes);
        });
    });
    QObject::connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start();
}

void CLxImagePreviewTranslateTask::OnUploadEncoded(uint64_t u64Sequence, const QByteArray& bytes) {
    if (!m_spInFlight || u64Sequence != m_u64EncodeSequence || m_u64HttpId != 0)
        return;  // abandoned or cancelled while encoding
    const std::shared_ptr<RequestInfo> spInfo = m_spInFlight;
    spInfo->uploadBytes = bytes;
    if (bytes.isEmpty()) {
        LXUIKIT_LOG_WARN("PreprocessToUploadByteArray gives no bytes, key={}", spInfo->strKey);
        Finish(spInfo, ImageTranslateResult::Failed, QPixmap());
        return;
    }
    const QString base = GetServiceUrl();
    StartHttpTranslate(spInfo, base.isEmpty() ? std::string() : (base + QLatin1String(kTranslatePath)).toStdString());
}

void CLxImagePreviewTranslateTask::StartHttpTranslate(const std::shared_ptr<RequestInfo>& spInfo,
                                                      const std::string& url) {
    namespace http = core::network::http;
    http::RequestId id = 0;
    if (!url.empty()) {
        http::Request request(QString::fromStdString(url));
        request.method = "POST";
        request.headers.insert("X-Kora-Client-Deviceid", core::environment::GetDeviceId().toUtf8());
        request.headers.insert("X-Kora-Client-Type", QByteArray::number(core::environment::GetClientType()));
        request.headers.insert("X-Kora-Client-Version", core::environment::GetAppVersion().toUtf8());
        request.headers.insert("X-Kora-Client-Lang", core::environment::GetServerLanguage().toUtf8());
        request.fileFields.append(
            http::CreateFileField(QStringLiteral("image"), QStringLiteral("image"), spInfo->uploadBytes));
        // The in-flight state is set before the answer can arrive (answers come through the event
        // loop, never inside Start).
        m_spInFlight = spInfo;
        QPointer<CLxImagePreviewTranslateTask> guard(this);
        auto pHttpId = std::make_shared<uint64_t>(0);
        id = http::Start(request, [guard, pHttpId](const http::Response& response) {
            if (guard)
                guard->OnHttpAnswer(*pHttpId, response.i32NetworkError, response.i32HttpStatus, response.body);
        });
        *pHttpId = id;
    }
    if (id == 0) {
        LXUIKIT_LOG_WARN("StartRequest returns 0, url={}", url);
        m_spInFlight.reset();
        Finish(spInfo, ImageTranslateResult::Failed, QPixmap());
        return;
    }
    m_u64HttpId = id;
}

void CLxImagePreviewTranslateTask::OnHttpAnswer(uint64_t u64HttpId, int i32NetworkError, int i32HttpStatus,
                                                const QByteArray& body) {
    if (!m_spInFlight || u64HttpId != m_u64HttpId)
        return;  // an abandoned request's late answer
    const std::shared_ptr<RequestInfo> spInfo = m_spInFlight;
    const bool bOk = i32NetworkError == 0 && (i32HttpStatus == 0 || (i32HttpStatus >= 200 && i32HttpStatus < 300));
    if (!bOk) {
        LXUIKIT_LOG_WARN("StartRequest fails, result={}, code={}", i32NetworkError, i32HttpStatus);
        Finish(spInfo, ImageTranslateResult::Failed, QPixmap());
        return;
    }
    QString language;
    QVector<ImageRecord> records;
    const int status = ParseTranslateHttpBody(body, language, records);
    if (status != ImageTranslateResult::Success) {
        Finish(spInfo, status, QPixmap());
        return;
    }
    ImageRecordListCache entry;
    entry.strTargetLanguage = NormalizeTargetLanguage(language);
    entry.records = records;
    entry.i64Time = core::time_date::GetSvrTimeMillis();
    UpdateCache(spInfo->strKey, entry);
    const QPixmap pixmap = ComposeTranslatedPixmap(spInfo->source, records);
    Finish(spInfo, pixmap.isNull() ? ImageTranslateResult::Failed : ImageTranslateResult::Success, pixmap);
}

void CLxImagePreviewTranslateTask::Finish(const std::shared_ptr<RequestInfo>& spInfo, int i32Status,
                                          const QPixmap& pixmap) {
    if (m_spInFlight == spInfo) {
        m_spInFlight.reset();
        m_u64HttpId = 0;
    }
    ImageTranslateResult result;
    result.i32Status = i32Status;
    result.pixmap = i32Status == ImageTranslateResult::Success ? pixmap : QPixmap();
    if (spInfo->callback)
        spInfo->callback(spInfo->u64RequestId, spInfo->u32Index, result);
}

void CLxImagePreviewTranslateTask::CancelInFlightRequest() {
    if (!m_spInFlight)
        return;
    const std::shared_ptr<RequestInfo> spInfo = m_spInFlight;
    if (m_u64HttpId != 0)
        core::network::http::Cancel(m_u64HttpId);
    Finish(spInfo, ImageTranslateResult::Cancelled, QPixmap());
}

void CLxImagePreviewTranslateTask::AbandonInFlightRequest() {
    if (!m_spInFlight)
        return;
    if (m_u64HttpId != 0)
        core::network::http::Cancel(m_u64HttpId);
    m_spInFlight.reset();
    m_u64HttpId = 0;
}

QPixmap CLxImagePreviewTranslateTask::ComposeTranslatedPixmap(const QPixmap& source,
                                                              const QVector<ImageRecord>& records) {
    if (source.isNull())
        return QPixmap();
    if (records.isEmpty())
        return source;
    QImage image = source.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const qreal dpr = image.devicePixelRatio();
    image.setDevicePixelRatio(1.0);  // records are in pixels of the picture
    const QRect bounds = image.rect();
    const QList<LFontTokenLoader::FontToken>& tokens = LFontTokenLoader::getAllFontTokens();
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (const ImageRecord& record : records) {
        if (record.width <= 0 || record.height <= 0)
            continue;
        // In 64 bits: a hostile record may reach past the 32-bit range.
        const qint64 left = qMax<qint64>(record.x, 0), top = qMax<qint64>(record.y, 0);
        const qint64 right = qMin<qint64>(qint64(record.x) + record.width, bounds.width());
        const qint64 bottom = qMin<qint64>(qint64(record.y) + record.height, bounds.height());
        if (left >= right || top >= bottom)
            continue;
        const QRect rect(int(left), int(top), int(right - left), int(bottom - top));
        const QPoint corner(qBound(0, rect.left(), bounds.width() - 1), qBound(0, rect.top(), bounds.height() - 1));
        QColor background = image.pixelColor(corner);
        background.setAlpha(255);
        painter.fillRect(rect, background);

        QString token = tokens.isEmpty() ? QString() : tokens.constFirst().strName;
        while (!token.isEmpty()) {
            const QSizeF size = LFontTokenLoader::measureText(token, record.strTargetText);
            if (size.width() <= rect.width() && size.height() <= rect.height())
                break;
            const QString smaller = LFontTokenLoader::getSmallerFontToken(token);
            if (smaller.isEmpty())
                break;
            token = smaller;
        }
        painter.setFont(LFontTokenLoader::font(token));
        const int r = background.red(), g = background.green(), b = background.blue();
        const bool bMidGrey = std::abs(r - 127) < 16 && std::abs(g - 127) < 16 && std::abs(b - 127) < 16;
        painter.setPen(bMidGrey ? QColor(Qt::white) : QColor(255 - r, 255 - g, 255 - b));
        painter.drawText(rect, Qt::AlignCenter, record.strTargetText);
    }
    painter.end();
    image.setDevicePixelRatio(dpr);
    return QPixmap::fromImage(std::move(image));
}
