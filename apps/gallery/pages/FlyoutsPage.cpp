// Flyouts: a panel that follows the main window. The buttons send the host's messages (main
// window hidden, restored, application exiting) through the core's message dispatch, exactly as
// a host does; the log shows what the panel did. Hide the panel yourself, then send "hidden" and
// "restored": it stays hidden, as the user left it.

#include "GalleryPages.h"

#include <LxCore/MessageDispatch.h>
#include <LxStdUI/LCheck.h>
#include <LxStdUI/LSwitch.h>
#include <LxStdUI/LText.h>
#include <LxStdUI/LTitle.h>
#include <LxUIKit/LxFlyoutsWnd.h>

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FlyoutsPage)
};

// A quote panel that reports what the main window's messages did to it.
class QuoteFlyout : public LxFlyoutsWnd {
public:
    QuoteFlyout(QWidget* parent, QPlainTextEdit* log) : LxFlyoutsWnd(parent), m_pLog(log) {
        auto* name = new LTitle(this);
        name->setTitleStyle(2);
        name->setText(Texts::tr("LNTF  Lanternfish Robotics"));
        auto* price = new LText(QStringLiteral("42.17  +1.35%"), this);
        auto* row = new QHBoxLayout;
        row->addWidget(new LText(Texts::tr("Price alerts"), this));
        row->addStretch(1);
        row->addWidget(new LSwitch(this));
        contentLayout()->addWidget(name);
        contentLayout()->addWidget(price);
        contentLayout()->addLayout(row);
        resize(260, 120);
    }

protected:
    void OnAppHide() override {
        LxFlyoutsWnd::OnAppHide();
        Note(QStringLiteral("OnAppHide"));
    }
    void OnAppRestore() override {
        LxFlyoutsWnd::OnAppRestore();
        Note(QStringLiteral("OnAppRestore"));
    }
    void OnAppExit() override {
        Note(QStringLiteral("OnAppExit"));
        hide();  // the gallery goes on running: hide instead of closing for good
    }

private:
    void Note(const QString& what) {
        if (m_pLog)
            m_pLog->appendPlainText(Texts::tr("%1: panel %2, hidden by the application: %3")
                                        .arg(what, isHidden() ? Texts::tr("hidden") : Texts::tr("shown"),
                                             IsHiddenByApp() ? Texts::tr("yes") : Texts::tr("no")));
    }
    QPointer<QPlainTextEdit> m_pLog;
};

}  // namespace

QWidget* CreateFlyoutsPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* root = new QVBoxLayout(page);
    auto* title = new LTitle(page);
    title->setTitleStyle(1);
    title->setText(Texts::tr("Flyouts"));
    root->addWidget(title);
    auto* hint = new LText(Texts::tr("The panel follows the main window: it hides with it and comes back with it, "
                                     "unless you had hidden it yourself."),
                           page);
    hint->setTextStyle(6);
    hint->setWordWrap(true);
    root->addWidget(hint);

    auto* log = new QPlainTextEdit(page);
    log->setReadOnly(true);
    log->setObjectName(QStringLiteral("FlyoutLog"));
    auto* flyout = new QuoteFlyout(page, log);
    flyout->setObjectName(QStringLiteral("GalleryFlyout"));

    auto* buttons = new QHBoxLayout;
    auto* open = new QPushButton(Texts::tr("Open panel"), page);
    open->setObjectName(QStringLiteral("FlyoutOpen"));
    auto* close = new QPushButton(Texts::tr("Hide panel"), page);
    auto* hidden = new QPushButton(Texts::tr("Main window hidden"), page);
    hidden->setObjectName(QStringLiteral("FlyoutMainHidden"));
    auto* restored = new QPushButton(Texts::tr("Main window restored"), page);
    restored->setObjectName(QStringLiteral("FlyoutMainRestored"));
    auto* exiting = new QPushButton(Texts::tr("Application exiting"), page);
    auto* follow = new LCheck(Texts::tr("Follow the main window"), page);
    follow->setChecked(true);
    for (QWidget* w : {static_cast<QWidget*>(open), static_cast<QWidget*>(close), static_cast<QWidget*>(hidden),
                       static_cast<QWidget*>(restored), static_cast<QWidget*>(exiting)})
        buttons->addWidget(w);
    buttons->addStretch(1);
    root->addLayout(buttons);
    root->addWidget(follow);
    root->addWidget(log, 1);

    QObject::connect(open, &QPushButton::clicked, flyout, [flyout, open] {
        flyout->setAnchor(open, Qt::BottomEdge, 6);
        flyout->showAtAnchor();
    });
    QObject::connect(close, &QPushButton::clicked, flyout, &QWidget::hide);
    auto send = [](unsigned id) { _CMessageDispatch::instance()->Dispatch(int(id)); };
    QObject::connect(hidden, &QPushButton::clicked, page, [send] { send(LxFlyoutsWnd::kMsgMainWndHide); });
    QObject::connect(restored, &QPushButton::clicked, page, [send] { send(LxFlyoutsWnd::kMsgMainWndRestore); });
    QObject::connect(exiting, &QPushButton::clicked, page, [send] { send(LxFlyoutsWnd::kMsgAppExit); });
    QObject::connect(follow, &QCheckBox::toggled, flyout, &LxFlyoutsWnd::SetHideOrRestoreFollowMainWnd);
    return page;
}

void DemoFlyoutsPage(QWidget* page) {
    for (const char* name : {"FlyoutOpen", "FlyoutMainHidden", "FlyoutMainRestored"}) {
        if (auto* b = page->findChild<QPushButton*>(QString::fromLatin1(name)))
            b->click();
    }
}
