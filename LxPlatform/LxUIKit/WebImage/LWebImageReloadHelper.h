#pragma once
// LWebImageReloadHelper: automatic retries for any LxWebImageWidget.
//
// setAutoRetryTimes(widget, n) lets a widget retry a failed load n times (SetUrl again with the
// same URL, queued so that SetUrl is never re-entered from inside the status signal). The helper
// keeps its count on the widget itself, in two dynamic properties:
//   "____WebImageLoadFailCount"    consecutive failures so far (unsigned),
//   "____WebImageLoadMaxFailTimes" n + 1 (unsigned).
// Loaded emits webImageLoadSucess(widget, attempts); a failure with no retry left emits
// webImageLoadFinalFailed(widget, attempts); both reset the count. With n = 0 the first failure is
// final. The signal names are part of the interface ("Sucess" included).

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/LxWebImageDefine.h>

#include <QObject>

class LxWebImageWidget;

class LXUIKIT_EXPORT LWebImageReloadHelper : public QObject {
    Q_OBJECT
public:
    static constexpr const char* kFailCountProperty = "____WebImageLoadFailCount";
    static constexpr const char* kMaxFailTimesProperty = "____WebImageLoadMaxFailTimes";

    // The process-wide helper (created on first use).
    static LWebImageReloadHelper* instance();
    static LWebImageReloadHelper* instancePtr() { return instance(); }

    // Use instance(); public only for the global static that holds it.
    explicit LWebImageReloadHelper(QObject* parent = nullptr);

    void setAutoRetryTimes(LxWebImageWidget* widget, unsigned int times);

Q_SIGNALS:
    void webImageLoadSucess(LxWebImageWidget* widget, unsigned int attempts);
    void webImageLoadFinalFailed(LxWebImageWidget* widget, unsigned int attempts);

private Q_SLOTS:
    void OnImageLoadStatus(const QString& url, LxImageLoadStatus status);
};
