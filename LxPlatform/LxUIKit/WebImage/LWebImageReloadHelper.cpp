#include <LxUIKit/WebImage/LWebImageReloadHelper.h>

#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QPointer>
#include <QVariant>

Q_GLOBAL_STATIC(LWebImageReloadHelper, g_pReloadHelper)

LWebImageReloadHelper* LWebImageReloadHelper::instance() { return g_pReloadHelper(); }

LWebImageReloadHelper::LWebImageReloadHelper(QObject* parent) : QObject(parent) {}

void LWebImageReloadHelper::setAutoRetryTimes(LxWebImageWidget* widget, unsigned int times) {
    LXUIKIT_ASSERT_RETURN(widget);
    if (!widget->property(kFailCountProperty).isValid())
        widget->setProperty(kFailCountProperty, 0u);
    if (!widget->property(kMaxFailTimesProperty).isValid())
        LXUIKIT_SAFE_CONNECT(widget, &LxWebImageWidget::ImageLoadStatusSignal, this,
                             &LWebImageReloadHelper::OnImageLoadStatus, Qt::UniqueConnection);
    widget->setProperty(kMaxFailTimesProperty, times + 1);
}

void LWebImageReloadHelper::OnImageLoadStatus(const QString& url, LxImageLoadStatus status) {
    auto* widget = qobject_cast<LxWebImageWidget*>(sender());
    if (!widget)
        return;
    const unsigned int n = widget->property(kFailCountProperty).toUInt() + 1;
    const unsigned int max = widget->property(kMaxFailTimesProperty).toUInt();
    switch (status) {
    case LxImageLoadStatus::Loaded:
        emit webImageLoadSucess(widget, n);
        widget->setProperty(kFailCountProperty, 0u);
        break;
    case LxImageLoadStatus::DownloadFailed:
    case LxImageLoadStatus::LoadFailed:
        if (n < max) {
            widget->setProperty(kFailCountProperty, n);
            QPointer<LxWebImageWidget> guard(widget);
            QMetaObject::invokeMethod(
                this,
                [guard, url] {
                    if (guard)
                        guard->SetUrl(url, QString());
                },
                Qt::QueuedConnection);
        } else {
            emit webImageLoadFinalFailed(widget, n);
            widget->setProperty(kFailCountProperty, 0u);
        }
        break;
    default: break;
    }
}
