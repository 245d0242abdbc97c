#include <LxUIKit/DevTools/Performance/FpsMonitorDialog.h>
#include <LxUIKit/DevTools/Spy/LxSpyEntry.h>

#include <LxUIKit/DevTools/DevToolsText_p.h>

#include <LxUIKit/DevTools/Performance/FpsFrameCounter.h>
#include <LxUIKit/DevTools/Performance/FpsHelper.h>
#include <LxUIKit/DevTools/Performance/FpsMonitorDialog_p.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <fmt/format.h>

Q_DECLARE_METATYPE(QPointer<CFpsHelper>)

CFpsMonitorDialog::CFpsMonitorDialog(QWidget* parent) : QDialog(parent), m_d(new CFpsMonitorDialogPrivate) {
    qRegisterMetaType<QPointer<CFpsHelper>>();
    SetupUi();
    LXUIKIT_SAFE_CONNECT(CFpsFrameCounter::Singleton(), &CFpsFrameCounter::fpsUpdated, this,
                         &CFpsMonitorDialog::OnUpdateFps);
}

CFpsMonitorDialog::~CFpsMonitorDialog() {
    if (m_d->pHighlight)
        delete m_d->pHighlight.data();
}

CFpsMonitorDialog* CFpsMonitorDialog::ShowDialog() {
    static QPointer<CFpsMonitorDialog> s_dialog;
    if (!s_dialog) {
        s_dialog = new CFpsMonitorDialog();
        s_dialog->setAttribute(Qt::WA_DeleteOnClose);
    }
    s_dialog->show();
    s_dialog->raise();
    s_dialog->activateWindow();
    return s_dialog;
}

void CFpsMonitorDialog::SetupUi() {
    CFpsMonitorDialogPrivate* d = m_d.get();
    setWindowTitle(DevText("FPS监控工具"));
    setObjectName(QStringLiteral("popup_widget"));
    resize(760, 420);

    auto* top = new QHBoxLayout;
    d->pStartBtn = new QPushButton(DevText("开始"), this);
    d->pStopBtn = new QPushButton(DevText("停止"), this);
    d->pStopBtn->setEnabled(false);
    d->pTopCheck = new QCheckBox(DevText("置顶"), this);
    d->pSpyBtn = new QPushButton(DevText("UI Spy"), this);
    d->pTimeLabel = new QLabel(DevText("时间：00:00:00"), this);
    top->addWidget(d->pStartBtn);
    top->addWidget(d->pStopBtn);
    top->addWidget(d->pTopCheck);
    top->addWidget(d->pSpyBtn);
    top->addStretch(1);
    top->addWidget(d->pTimeLabel);

    d->pTable = new QTableWidget(0, 6, this);
    d->pTable->setHorizontalHeaderLabels({DevText("名称"), DevText("位置"), DevText("FPS"), DevText("平均FPS"),
                                          DevText("有效平均FPS"), DevText("峰值FPS")});
    d->pTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    d->pTable->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    d->pTable->verticalHeader()->setVisible(false);
    d->pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    d->pTable->setSelectionBehavior(QAbstractItemView::SelectRows);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(d->pTable, 1);

    LXUIKIT_SAFE_CONNECT(d->pStartBtn.data(), &QPushButton::clicked, this, &CFpsMonitorDialog::OnStart);
    LXUIKIT_SAFE_CONNECT(d->pStopBtn.data(), &QPushButton::clicked, this, &CFpsMonitorDialog::OnStop);
    LXUIKIT_SAFE_CONNECT(d->pTopCheck.data(), &QCheckBox::toggled, this, [this](bool on) {
        setWindowFlag(Qt::WindowStaysOnTopHint, on);
        show();  // changing the flags hides the window
    });
    LXUIKIT_SAFE_CONNECT(d->pSpyBtn.data(), &QPushButton::clicked, this, [] { devtools::spy::ShowSpyToolWin(); });
    LXUIKIT_SAFE_CONNECT(d->pTable.data(), &QTableWidget::itemClicked, this, &CFpsMonitorDialog::OnItemClicked);
}

void CFpsMonitorDialog::OnStart() {
    CFpsMonitorDialogPrivate* d = m_d.get();
    CFpsFrameCounter::Singleton()->Start();
    d->pStartBtn->setEnabled(false);
    d->pStopBtn->setEnabled(true);
    d->pTable->setRowCount(0);
    if (!d->pDisplayTimer) {
        d->pDisplayTimer = new QTimer(this);
        d->pDisplayTimer->setInterval(100);
        LXUIKIT_SAFE_CONNECT(d->pDisplayTimer.data(), &QTimer::timeout, this, [d] {
            const qint64 s = d->displayClock.elapsed() / 1000;
            d->pTimeLabel->setText(DevText("时间：%1:%2:%3")
                                       .arg(s / 3600, 2, 10, QLatin1Char('0'))
                                       .arg(s / 60 % 60, 2, 10, QLatin1Char('0'))
                                       .arg(s % 60, 2, 10, QLatin1Char('0')));
        });
    }
    d->displayClock.start();
    d->pDisplayTimer->start();
}

void CFpsMonitorDialog::OnStop() {
    CFpsMonitorDialogPrivate* d = m_d.get();
    CFpsFrameCounter::Singleton()->Stop();
    d->pStartBtn->setEnabled(true);
    d->pStopBtn->setEnabled(false);
    if (d->pDisplayTimer)
        d->pDisplayTimer->stop();
}

void CFpsMonitorDialog::OnUpdateFps() {
    QTableWidget* table = m_d->pTable;
    if (!table)
        return;
    table->setRowCount(0);
    for (CFpsHelper* helper : CFpsFrameCounter::Singleton()->GetFpsHelpers()) {
        QObject* object = helper->Object();
        if (!object)
            continue;
        helper->CatchPaintEvent(true);
        const int row = table->rowCount();
        table->insertRow(row);
        auto* name = new QTableWidgetItem(helper->Name());
        name->setData(Qt::UserRole, QVariant::fromValue(QPointer<CFpsHelper>(helper)));
        table->setItem(row, 0, name);
        QString place;
        if (object->isWidgetType()) {
            auto* w = static_cast<QWidget*>(object);
            const QPoint g = w->mapToGlobal(QPoint(0, 0));
            place = QString::fromStdString(fmt::format("({}, {}, {}, {})", g.x(), g.y(), w->width(), w->height()));
        }
        table->setItem(row, 1, new QTableWidgetItem(place));
        const double values[] = {helper->Fps(), helper->AverageFps(), helper->ValidAverageFps(), helper->MaxFps()};
        for (int i = 0; i < 4; ++i)
            table->setItem(row, 2 + i, new QTableWidgetItem(QString::number(values[i], 'f', 2)));
    }
}

void CFpsMonitorDialog::OnItemClicked(QTableWidgetItem* item) {
    if (!item || !m_d->pTable)
        return;
    const QTableWidgetItem* first = m_d->pTable->item(item->row(), 0);
    const auto helper = first ? first->data(Qt::UserRole).value<QPointer<CFpsHelper>>() : QPointer<CFpsHelper>();
    if (helper)
        HighLightObject(helper->Object());
}

void CFpsMonitorDialog::HighLightObject(QObject* object) {
    if (!object || !object->isWidgetType())
        return;
    auto* widget = static_cast<QWidget*>(object);
    CFpsMonitorDialogPrivate* d = m_d.get();
    if (!d->pHighlight) {
        auto* frame = new QDialog(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput);
        frame->setAttribute(Qt::WA_TransparentForMouseEvents);
        frame->setAttribute(Qt::WA_DeleteOnClose);
        frame->setAttribute(Qt::WA_AlwaysStackOnTop);
        frame->setObjectName(QStringLiteral("fps_highlight_frame"));
        frame->setProperty("popup_widget", true);
        frame->setStyleSheet(QString::fromStdString(fmt::format("border:{}px solid red", 2)));
        frame->setWindowOpacity(0.5);
        d->pHighlight = frame;
        d->pBlinkTimer = new QTimer(frame);
        d->pBlinkTimer->setInterval(CFpsMonitorDialogPrivate::kBlinkIntervalMs);
        LXUIKIT_SAFE_CONNECT(d->pBlinkTimer.data(), &QTimer::timeout, this, &CFpsMonitorDialog::OnBlinkTick);
    }
    d->pHighlight->resize(widget->size());
    d->pHighlight->move(widget->mapToGlobal(QPoint(0, 0)));
    d->i32BlinkCount = CFpsMonitorDialogPrivate::kBlinkTicks;
    d->pBlinkTimer->start();
}

void CFpsMonitorDialog::OnBlinkTick() {
    CFpsMonitorDialogPrivate* d = m_d.get();
    if (!d->pHighlight || !d->pBlinkTimer)
        return;
    if (d->i32BlinkCount == 0) {
        d->i32BlinkCount = CFpsMonitorDialogPrivate::kBlinkTicks;
        d->pBlinkTimer->stop();
        d->pHighlight->hide();
        return;
    }
    --d->i32BlinkCount;
    d->pHighlight->setVisible(d->i32BlinkCount % 2 == 1);
}
