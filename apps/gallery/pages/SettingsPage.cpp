// Settings: a settings page built from every section row: titles (one with a link), radio and
// check rows, description/data/link rows, label-plus-input rows whose labels share one width, switch
// rows, and child settings with tree connectors, stacked by CSectionWidgetMgrView.

#include "GalleryPages.h"

#include <LxStdUI/LLineEdit.h>
#include <LxUIKit/SettingSection/SectionWidget.h>
#include <LxUIKit/SettingSection/SectionWidgetMgrView.h>
#include <LxUIKit/SettingSection/SettingChildTreeConnector.h>

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QScrollArea>

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SettingsPage)
};

const QMargins kRow(24, 0, 24, 0);

// A child setting: the connector, then the row.
QHBoxLayout* Child(CSettingChildTreeConnector::SettingChildTreeLineRole role, QWidget* row, QWidget* parent) {
    auto* l = new QHBoxLayout;
    l->setContentsMargins(kRow.left(), 0, 0, 0);
    l->setSpacing(0);
    l->addWidget(new CSettingChildTreeConnector(role, parent));
    l->addWidget(row, 1);
    return l;
}

}  // namespace

QWidget* CreateSettingsPage(QWidget* parent) {
    auto* scroll = new QScrollArea(parent);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* view = new CSectionWidgetMgrView(scroll);
    view->setObjectName(QStringLiteral("GallerySettings"));

    auto* header = new CSectionTitleWidget(Texts::tr("Notifications"), QMargins(24, 16, 24, 0), view);
    header->SetRightCtrlLinkButton(Texts::tr("Restore defaults"), [] {});
    view->SetHeaderSection(header, 8);

    CSectionSwitchWidget::SectionSwitchWidgetConfig cfg;
    cfg.text = Texts::tr("Price alerts");
    cfg.checked = true;
    cfg.margins = kRow;
    cfg.height = 40;
    auto* alerts = new CSectionSwitchWidget(cfg, view);
    view->AddBodySection(alerts, 0);
    // Children of the switch: shown with tree connectors.
    auto* sound = new CSectionCheckWidget(CSectionCheckWidget::CheckBox, Texts::tr("Play a sound"), QMargins(), view);
    auto* badge = new CSectionCheckWidget(CSectionCheckWidget::CheckBox, Texts::tr("Show a badge"), QMargins(), view);
    static_cast<QAbstractButton*>(sound->GetButton())->setChecked(true);
    sound->setFixedHeight(36);
    badge->setFixedHeight(36);
    view->AddBodySection(Child(CSettingChildTreeConnector::LineBranch, sound, view), 0);
    view->AddBodySection(Child(CSettingChildTreeConnector::LineLast, badge, view), 16);

    view->AddBodySection(new CSectionTitleWidget(Texts::tr("Quote colours"), QMargins(24, 8, 24, 0), view), 8);
    auto* redUp = new CSectionCheckWidget(CSectionCheckWidget::RadioButton, Texts::tr("Red for rises"), kRow, view);
    auto* greenUp = new CSectionCheckWidget(CSectionCheckWidget::RadioButton, Texts::tr("Green for rises"), kRow, view);
    static_cast<QAbstractButton*>(greenUp->GetButton())->setChecked(true);
    view->AddBodySection(redUp, 8);
    view->AddBodySection(greenUp, 16);

    view->AddBodySection(new CSectionTitleWidget(Texts::tr("Account"), QMargins(24, 8, 24, 0), view), 8);
    auto* linked = new CSectionMultiTextWidget(kRow, view);
    linked->SetDescText(Texts::tr("Linked brokerage account"))
        ->SetDataText(Texts::tr("Harborline Securities ••••7781"))
        ->SetCtrlLink(Texts::tr("Change"), [] {});
    linked->Completed();
    auto* storage = new CSectionMultiTextWidget(kRow, view);
    storage
        ->SetDescText(Texts::tr("Downloaded pictures and charts are kept on this computer and removed after "
                                "thirty days without use."))
        ->SetDataText(Texts::tr("%1 MB").arg(318));
    storage->Completed();
    auto* more = new CSectionMultiTextWidget(kRow, view);
    more->SetCtrlLink(Texts::tr("Privacy settings"), [] {});
    more->Completed();
    view->AddBodySection(linked, 8);
    view->AddBodySection(storage, 8);
    view->AddBodySection(more, 16);

    view->AddBodySection(new CSectionTitleWidget(Texts::tr("Trading"), QMargins(24, 8, 24, 0), view), 8);
    auto* nick = new CSectionLineEditWidget(kRow, view);
    auto* nickEdit = new LLineEdit(nick);
    nickEdit->setText(QStringLiteral("quietheron"));
    nickEdit->setFixedWidth(200);
    nick->Create(new LText(Texts::tr("Nickname"), nick), nickEdit);
    auto* voice = new CSectionComboBoxWidget(kRow, view);
    auto* voiceBox = new CSectionVoiceComboBox(voice);
    voiceBox->addItems({Texts::tr("Chime"), Texts::tr("Bell"), Texts::tr("None")});
    voiceBox->setFixedWidth(200);
    voice->Create(new LText(Texts::tr("Order fill sound"), voice), voiceBox);
    auto* remind = new CSectionComboBoxWidget(kRow, view);
    auto* remindBox = new CSectionReminderComboBox(remind);
    remindBox->addItems({Texts::tr("5 minutes before the open"), Texts::tr("At the open")});
    remindBox->setFixedWidth(200);
    remind->Create(new LText(Texts::tr("Reminder"), remind), remindBox);
    int common = 0;
    for (CSectionInputWidget* row : {static_cast<CSectionInputWidget*>(nick), static_cast<CSectionInputWidget*>(voice),
                                     static_cast<CSectionInputWidget*>(remind)})
        common = qMax(common, row->GetDescTextWidth());
    for (CSectionInputWidget* row : {static_cast<CSectionInputWidget*>(nick), static_cast<CSectionInputWidget*>(voice),
                                     static_cast<CSectionInputWidget*>(remind)}) {
        row->setFixedHeight(40);
        if (row->CanBeRefreshed())
            row->RefreshLayout(common);
        view->AddBodySection(row, 4);
    }
    view->GetMainLayout()->addStretch(1);
    scroll->setWidget(view);
    return scroll;
}
