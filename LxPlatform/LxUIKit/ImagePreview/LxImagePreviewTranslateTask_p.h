#pragma once
// Internals of the translation task, reachable by its tests, benchmark and fuzz target.

#include <LxUIKit/ImagePreview/LxImagePreviewDefine.h>

#include <QByteArray>
#include <QImage>
#include <QPixmap>
#include <QString>
#include <QVector>

#include <cstdint>

namespace lxuikit_translate {

// Checks one answer body of the service. Answers 0 with the target language (as sent) and the
// valid records, 1 for a failure, 2 for a well-formed answer without usable text; every refusal is
// logged with its own text.
int ParseTranslateHttpBody(const QByteArray& body, QString& strTargetLanguage, QVector<ImageRecord>& records);

// The upload encoding with the bound as a parameter; `pAttempts` (optional) receives how many
// encodings were made (1 for PNG, 1 + JPEG tries otherwise).
QByteArray EncodeForUpload(const QPixmap& pixmap, qint64 i64Bound, int* pAttempts = nullptr);
// The same from an image (thread-safe: the task encodes on a worker thread).
QByteArray EncodeForUpload(const QImage& image, qint64 i64Bound, int* pAttempts = nullptr);

// An answer stored at its time is fresh at `now` while now - time <= 86,400,000 ms.
bool IsFresh(const ImageRecordListCache& entry, int64_t now);

// The cache operations (see the task's header).
bool FindValidCache(const QString& key, ImageRecordListCache* pOut);
void UpdateCache(const QString& key, const ImageRecordListCache& entry);
int CachedLanguageCount(const QString& key);  // entries kept for the key, expired or not

}  // namespace lxuikit_translate
