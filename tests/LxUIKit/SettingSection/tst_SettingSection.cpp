// Settings rows: how each composes and sizes its controls, the page stack's header and null
// sections, and the painted tree connector in both themes at device pixel ratios 1 and 2.

#include <LxStdUI/LCheck.h>
#include <LxStdUI/LLink.h>
#include <LxStdUI/LRadio.h>
#include <LxStdUI/LTitle.h>
#include <LxStdUI/ResProvider.h>
#include <LxUIKit/SettingSection/SectionWidget.h>
#include <LxUIKit/SettingSection/SectionWidgetMgrView.h>
#include <LxUIKit/SettingSection/SettingChildTreeConnector.h>

#include <QPainter>
#include <QSpacerItem>
#include <QtTest>

#include "LxTestSupport.h"

class TestSettingSection : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }

    // The title row pushes its link to the right edge and calls back on a click; a check row makes
    // the button its type asks for, and none (with an assertion) for an unknown type.
    void baseTitleAndCheckRows() {
        CSectionTitleWidget title(QStringLiteral("Notifications"), QMargins(4, 3, 2, 1));
        QHBoxLayout* layout = *title.GetMainHBoxLayout();
        QCOMPARE(title.findChild<LTitle*>()->text(), QStringLiteral("Notifications"));
        int clicks = 0;
        title.SetRightCtrlLinkButton(QStringLiteral("Reset"), [&] { ++clicks; });
        QCOMPARE(layout->count(), 3);
        QVERIFY(layout->itemAt(1)->spacerItem());
        auto* link = qobject_cast<LLink*>(layout->itemAt(2)->widget());
        QVERIFY(link);
        Q_EMIT link->clicked();
        QCOMPARE(clicks, 1);

        CSectionCheckWidget radio(CSectionCheckWidget::RadioButton, QStringLiteral("Sound"), QMargins());
        CSectionCheckWidget check(CSectionCheckWidget::CheckBox, QStringLiteral("Badge"), QMargins());
        QVERIFY(qobject_cast<LRadio*>(radio.GetButton()));
        QVERIFY(qobject_cast<LCheck*>(check.GetButton()));
        lxtest::AssertRecorder rec;
        CSectionCheckWidget bad(CSectionCheckWidget::ButtonType(7), QStringLiteral("?"), QMargins());
        QCOMPARE(bad.GetButton(), nullptr);
        QVERIFY(rec.has(QStringLiteral("SettingSection/SectionWidget"), QStringLiteral("Invalid check style")));
    }

    void multiTextPlacesItsSegments() {
        const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;
        {
            CSectionMultiTextWidget row{QMargins()};
            row.SetCtrlLink(QStringLiteral("Manage"), [] {})->Completed();  // alone: on the left
            QCOMPARE((*row.GetMainHBoxLayout())->itemAt(0)->alignment(),
                     Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
        }
        {
            CSectionMultiTextWidget row{QMargins()};
            row.SetDescText(QStringLiteral("Alerts for price moves"))->SetCtrlLink(QStringLiteral("Manage"), [] {});
            row.Completed();
            QHBoxLayout* l = *row.GetMainHBoxLayout();
            QCOMPARE(l->itemAt(1)->alignment(), right);
            QCOMPARE(l->stretch(0), 1);
            QCOMPARE(l->stretch(1), 0);
        }
        {
            CSectionMultiTextWidget row{QMargins()};
            const QString longData = QStringLiteral("Brightwater Mutual Fund Account No. 0042-7781-5519");
            row.SetDescText(QStringLiteral("Linked account"))
                ->SetDataText(longData)
                ->SetCtrlLink(QStringLiteral("Edit"), [] {});
            row.Completed();
            QHBoxLayout* l = *row.GetMainHBoxLayout();
            QCOMPARE(l->count(), 2);
            QWidget* box = l->itemAt(1)->widget();
            QVERIFY(box && box->layout());
            QCOMPARE(l->itemAt(1)->alignment(), right);
            auto* data = qobject_cast<LText*>(row.GetSegment(CSectionMultiTextWidget::DataSegment));
            QCOMPARE(box->layout()->itemAt(0)->widget(), data);
            row.resize(520, 40);
            row.show();
            QVERIFY(QTest::qWaitForWindowExposed(&row));
            QVERIFY(data->width() <= 160);
            QVERIFY(data->isElided());
        }
    }

    void descTextMeasuresAtItsWidth() {
        CSectionDescText text(
            QStringLiteral("Orders placed outside trading hours are queued until the next session opens."));
        text.resize(0, 0);  // a row not laid out yet
        QCOMPARE(text.sizeHint().width(), 128);
        const int at128 = text.sizeHint().height();
        QCOMPARE(at128,
                 text.fontMetrics().boundingRect(QRect(0, 0, 128, 100000), Qt::TextWordWrap, text.text()).height() + 1);
        text.resize(1000, 10);
        QCOMPARE(text.sizeHint().width(), 1000);
        QVERIFY(text.sizeHint().height() < at128);
    }

    void inputRowsShareALabelWidth() {
        CSectionLineEditWidget a{QMargins()};
        auto* labelA = new LText(QStringLiteral("Nickname"), &a);
        a.Create(labelA, new LLineEdit(&a));
        CSectionComboBoxWidget b{QMargins()};
        auto* labelB = new LText(QStringLiteral("Reminder sound for fills"), &b);
        labelB->setMaximumWidth(60);
        auto* combo = new CSectionReminderComboBox(&b);
        auto* nested = new LText(QStringLiteral("x"), combo);  // RefreshLayout reaches nested labels too
        b.Create(labelB, combo);
        CSectionComboBoxWidget noDesc{QMargins()};
        noDesc.Create(nullptr, new LComboBox(&noDesc));
        QVERIFY(a.CanBeRefreshed());
        QVERIFY(!noDesc.CanBeRefreshed());
        QCOMPARE(noDesc.GetDescTextWidth(), 0);
        QCOMPARE(b.GetDescTextWidth(), 60);
        QCOMPARE(a.GetDescTextWidth(), labelA->getTextWidth());
        const int common = qMax(a.GetDescTextWidth(), b.GetDescTextWidth());
        for (CSectionInputWidget* row : {static_cast<CSectionInputWidget*>(&a), static_cast<CSectionInputWidget*>(&b)})
            row->RefreshLayout(common);
        QCOMPARE(labelA->minimumWidth(), common);
        QCOMPARE(labelB->maximumWidth(), common);
        QCOMPARE(nested->minimumWidth(), common);
    }

    void switchRow() {
        QList<bool> seen;
        CSectionSwitchWidget::SectionSwitchWidgetConfig cfg;
        cfg.text = QStringLiteral("Night mode");
        cfg.checked = true;
        cfg.margins = QMargins(16, 0, 16, 0);
        cfg.onToggled = [&](bool on) { seen.append(on); };
        cfg.height = 48;
        CSectionSwitchWidget row(cfg);
        QCOMPARE(row.height(), 48);
        QVERIFY(row.IsChecked());
        QVERIFY(seen.isEmpty());  // the initial state is not a toggle
        QCOMPARE((*row.GetMainHBoxLayout())->itemAt(2)->widget(), row.GetSwitch());
        row.SetChecked(false);
        QCOMPARE(seen, QList<bool>{false});
        delete row.GetSwitch();
        lxtest::AssertRecorder rec;
        row.SetChecked(true);
        QCOMPARE(rec.count(), 1);
        QVERIFY(!row.IsChecked());
    }

    void mgrViewSections() {
        CSectionWidgetMgrView view;
        QVBoxLayout* l = view.GetMainLayout();
        auto* body = new CSectionTitleWidget(QStringLiteral("General"), &view);
        view.AddBodySection(body, 12);
        auto* header = new CSectionTitleWidget(QStringLiteral("Account"), &view);
        view.SetHeaderSection(header, 8);
        QCOMPARE(l->indexOf(header), 2);  // not moved to the top
        lxtest::AssertRecorder rec;
        auto* second = new CSectionTitleWidget(QStringLiteral("Other"), &view);
        view.SetHeaderSection(second, 8);
        QCOMPARE(view.GetHeaderSection(), header);
        QCOMPARE(l->indexOf(second), -1);
        view.AddSectionWidget(nullptr, 20);
        view.AddSectionLayout(nullptr, 20);
        QVERIFY(rec.has(QStringLiteral("SettingSection/SectionWidgetMgrView"), QStringLiteral("pSection")));
        QCOMPARE(rec.count(), 3);
        QCOMPARE(l->count(), 4);  // two sections and their gaps only
        QCOMPARE(l->itemAt(1)->spacerItem()->sizeHint().height(), 12);
        auto* inner = new QHBoxLayout;
        view.AddBodySection(inner, 0);
        QCOMPARE(view.GetSectionWidgets(), (QVector<QWidget*>{body, header}));
        QCOMPARE(view.GetSectionLayouts(), QVector<QLayout*>{inner});
    }

    void connectorPaints_data() {
        QTest::addColumn<int>("theme");
        QTest::addColumn<qreal>("dpr");
        for (int theme : {0, 1})
            for (qreal dpr : {1.0, 2.0})
                QTest::addRow("%s@%gx", theme ? "dark" : "light", dpr) << theme << dpr;
    }

    void connectorPaints() {
        QFETCH(int, theme);
        QFETCH(qreal, dpr);
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Theme(theme));
        const QColor line = lx_ui_res::Provider::instance()->color(QStringLiteral("ct_line_separator"));
        const QColor paper(Qt::magenta);
        auto render = [&](CSettingChildTreeConnector::SettingChildTreeLineRole role) {
            CSettingChildTreeConnector c(role);
            QImage img(QSize(28, 36) * dpr, QImage::Format_ARGB32);
            img.setDevicePixelRatio(dpr);
            img.fill(paper);
            c.render(&img, QPoint(), QRegion(), QWidget::DrawChildren);
            return img;
        };
        // Logical point to device pixel.
        auto px = [&](const QImage& img, int x, int y) { return QColor(img.pixel(int(x * dpr), int(y * dpr))); };

        const QImage branch = render(CSettingChildTreeConnector::LineBranch);
        QCOMPARE(px(branch, 8, 2), line);
        QCOMPARE(px(branch, 8, 34), line);   // the stem goes on below mid-height
        QCOMPARE(px(branch, 19, 18), line);  // the arm at mid-height
        QCOMPARE(px(branch, 22, 18), paper);
        QCOMPARE(px(branch, 4, 18), paper);

        const QImage last = render(CSettingChildTreeConnector::LineLast);
        QCOMPARE(px(last, 8, 2), line);
        QCOMPARE(px(last, 8, 30), paper);  // the stem stops at the elbow
        QCOMPARE(px(last, 15, 18), line);
        QCOMPARE(px(last, 15, 10), paper);  // no top or right side of the elbow rectangle
        QCOMPARE(px(last, 20, 8), paper);

        const QImage none = render(CSettingChildTreeConnector::LineNone);
        QCOMPARE(px(none, 8, 2), paper);
        QCOMPARE(px(none, 15, 18), paper);
    }

    void connectorRoleAndMouse() {
        CSettingChildTreeConnector c(CSettingChildTreeConnector::LineBranch);
        QCOMPARE(c.sizeHint(), QSize(28, 36));
        QVERIFY(c.testAttribute(Qt::WA_TransparentForMouseEvents));
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));
        struct PaintCounter : QObject {
            int n = 0;
            bool eventFilter(QObject*, QEvent* e) override {
                n += e->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
        } counter;
        c.installEventFilter(&counter);
        c.SetLineRole(CSettingChildTreeConnector::LineBranch);
        QTest::qWait(30);
        QCOMPARE(counter.n, 0);
        c.SetLineRole(CSettingChildTreeConnector::LineLast);
        QTRY_VERIFY(counter.n > 0);
        QCOMPARE(c.GetLineRole(), CSettingChildTreeConnector::LineLast);
        lxtest::AssertRecorder rec;
        c.SetLineRole(CSettingChildTreeConnector::SettingChildTreeLineRole(9));
        QImage img(28, 36, QImage::Format_ARGB32);
        c.render(&img);
        QVERIFY(rec.has(QStringLiteral("SettingSection/SettingChildTreeConnector"),
                        QStringLiteral("CSettingChildTreeConnector unexpected role")));
    }
};

QTEST_MAIN(TestSettingSection)
#include "tst_SettingSection.moc"
