#pragma once
// Types shared by the image preview window, its content area and the translation task.

#include <LxUIKit/LxUIKitExport.h>

#include <QMetaType>
#include <QPixmap>
#include <QString>
#include <QVector>

#include <cstdint>

// One picture of the preview window, shared by std::shared_ptr between the window, its content
// area and translation callbacks.
struct LXUIKIT_EXPORT ImageInfo {
    enum TranslateState : int {
        TranslateNone = 0,
        Translating = 1,  // a request is pending: the content area runs its scan line
        Translated = 2,
    };

    ImageInfo();  // takes the next unique id
    ImageInfo(const QString& url, int width, int height);

    QString strUrl;
    int i32Width = 0;  // size announced by the host (0 when unknown)
    int i32Height = 0;
    uint64_t u64UniqueId = 0;

    double dScale = 1.0;             // current zoom of the picture
    bool bUserChangedScale = false;  // the user zoomed: the window keeps the scale
    int i32TranslateState = TranslateNone;
    QPixmap translatedPixmap;      // composed by the translation task
    bool bShowTranslated = false;  // the translation is shown instead of the picture
};

// What a translation request ends with.
struct LXUIKIT_EXPORT ImageTranslateResult {
    enum Status : int { Success = 0, Failed = 1, NoResult = 2, Cancelled = 3 };
    int i32Status = Failed;
    QPixmap pixmap;  // the composed translation; null unless Success
};
Q_DECLARE_METATYPE(ImageTranslateResult)

// One translated text region, in pixels of the uploaded picture.
struct LXUIKIT_EXPORT ImageRecord {
    int32_t x = 0;
    int32_t y = 0;
    int32_t width = 0;
    int32_t height = 0;
    QString strTargetText;
};

// One cached answer: the records for one picture in one target language.
struct LXUIKIT_EXPORT ImageRecordListCache {
    QString strTargetLanguage;  // normalised
    QVector<ImageRecord> records;
    int64_t i64Time = 0;  // server time (ms) when stored
};
