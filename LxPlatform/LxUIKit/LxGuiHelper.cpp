#include <LxUIKit/LxGuiHelper.h>

#include <LxStdUI/LDialog.h>
#include <LxStdUI/MultiLang.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/Zip/LxZip.h>

#include <QGuiApplication>
#include <QLabel>
#include <QPropertyAnimation>
#include <QScreen>
#include <QTimer>

namespace gui {
namespace {

void OnLoadSchemeUrlFailed(const QString& url, QObject* parent) {
    auto* dlg = new LDialog(nullptr);
    dlg->setModal(true);
    dlg->setLxStyle(2);
    dlg->setTitle(lxstdui_multi_lang::gui_helper::textTip());
    dlg->setContent(lxstdui_multi_lang::gui_helper::textPageLoadFailed());
    dlg->setConfirmText(lxstdui_multi_lang::gui_helper::textIKnow());
    QWidget* parentWidget = parent && parent->isWidgetType() ? static_cast<QWidget*>(parent) : nullptr;
    dlg->showCenter(parentWidget, -1);
    LXUIKIT_LOG_ERROR("Load scheme url fail!!! url = {}", url);
}

QRect DesktopRect() {
    QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : QRect(0, 0, 1280, 800);
}

}  // namespace

core::CoreInitParam GetCoreInitParamVeryFirst() {
    core::CoreInitParam param;
    param.fnExtractDir = [](const QString& zipPath, const QString& destDir) {
        return _zip::ExtractDir(zipPath, destDir);
    };
    param.fnCompressDir = [](const QString& srcDir, const QString& zipPath) {
        return _zip::CompressDir(srcDir, zipPath);
    };
    param.fnCompressFiles = [](const std::vector<QString>& files, const QString& zipPath) {
        return _zip::CompressFiles(files, zipPath);
    };
    param.fnLoadSchemeUrlFailed = &OnLoadSchemeUrlFailed;
    return param;
}

namespace {

void ShowToastLabel(const QString& text, const QString& color, const QString& textColor, int durationMs) {
    auto* label = new QLabel(nullptr, Qt::ToolTip | Qt::WindowStaysOnTopHint);
    label->setObjectName(QStringLiteral("LxSimpleToast"));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    label->setText(text);
    label->setStyleSheet(QStringLiteral("background-color:") + color + QStringLiteral("; color:") + textColor +
                         QStringLiteral("; font-token:title2; margin:5px; padding:10px; "
                                        "border-radius: 4px; box-shadow: 0px 5px 10px rgba(0, 0, 0, 0.3);"));
    label->setAlignment(Qt::AlignCenter);
    label->show();

    QTimer::singleShot(durationMs, durationMs < 2000 ? Qt::PreciseTimer : Qt::CoarseTimer, label,
                       &QObject::deleteLater);

    const QRect desk = DesktopRect();
    const int x = desk.x() + (desk.width() - label->width()) / 2;
    const int y = desk.y() + qRound((desk.height() - label->height()) / 1.8);
    label->move(x, y);
    if (durationMs <= 1000)
        return;

    auto* anim = new QPropertyAnimation(label, "geometry", label);
    anim->setDuration(500);
    const QRect start(x, desk.y() + desk.height(), label->width(), label->height());
    anim->setStartValue(start);
    anim->setEndValue(start.translated(0, -label->height() - 50));
    anim->setEasingCurve(QEasingCurve::OutBack);
    anim->start(QAbstractAnimation::DeleteWhenStopped);
}

}  // namespace

void ShowSimpleToast(QString text, TriBool state, int durationMs) {
    QString color = QStringLiteral("#333333");
    if (state == TriBool::True) {
        text = QStringLiteral("✔  ") + text;
        color = QStringLiteral("#28a745");
    } else if (state == TriBool::False) {
        text = QStringLiteral("❌  ") + text;
        color = QStringLiteral("#dc3545");
    }
    ShowToastLabel(text, color, QStringLiteral("white"), durationMs);
}

void ShowToast(const QString& text, LxToastType type, int durationMs) {
    switch (type) {
    case LxToastType::Success: return ShowSimpleToast(text, TriBool::True, durationMs);
    case LxToastType::Error: return ShowSimpleToast(text, TriBool::False, durationMs);
    case LxToastType::Warning:
        return ShowToastLabel(QStringLiteral("⚠  ") + text, QStringLiteral("#f0ad4e"), QStringLiteral("#212529"),
                              durationMs);
    case LxToastType::Info: break;
    }
    ShowSimpleToast(text, TriBool::Neutral, durationMs);
}

}  // namespace gui
