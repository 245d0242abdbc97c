// The inspector's views: style-sheet rules, property editing through the debug variable parser,
// the event log, connections both ways, the widget tree's search; the component base they share
// (configuration and broadcasts that stay safe while components come and go in one).

#include <LxStdUI/LStyleSheetStyleHelper.h>
#include <LxUIKit/DevTools/Spy/LxDebugVariableParser_p.h>
#include <LxUIKit/DevTools/Spy/LxObjectEventView_p.h>
#include <LxUIKit/DevTools/Spy/LxObjectSignalSlotView_p.h>
#include <LxUIKit/DevTools/Spy/LxWidgetGeometryView_p.h>
#include <LxUIKit/DevTools/Spy/LxWidgetPropertyView_p.h>
#include <LxUIKit/DevTools/Spy/LxWidgetTreeInfoView_p.h>

#include <QApplication>
#include <QPushButton>
#include <QSlider>
#include <QWindow>
#include <QtTest>

#include <functional>
#include <memory>

#include "LxTestSupport.h"

using namespace devtools::spy;

namespace {
struct Probe : ILxUISpyComponent {
    QStringList log;
    std::function<void()> onHover;
    bool takeKeys = false;
    Config previous, current;
    void OnHoveredPseudoWidgetChanged(const PseudoWidget& pw, HoverSource) override {
        log << QStringLiteral("hover:") + pw.objectName();
        if (onHover)
            onHover();
    }
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool clicked) override {
        log << (clicked ? QStringLiteral("click:") : QStringLiteral("select:")) + pw.objectName();
    }
    void OnDebugWindowChanged(QWindow* w) override { log << QStringLiteral("window:%1").arg(w != nullptr); }
    void OnConfigChanged(const Config& p, const Config& c) override {
        previous = p;
        current = c;
        log << QStringLiteral("config");
    }
    bool OnHotKey(Qt::Key, Qt::KeyboardModifiers) override {
        log << QStringLiteral("key");
        return takeKeys;
    }
};
}  // namespace

class TestSpyViews : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() {
        ILxUISpyComponent::ResetSharedState();
        qApp->setStyleSheet(QString());
        lxtest::ResetGlobals();
    }
    void styleSheetRules() {
        // Keyword values come back as written (Qt's own keyword names are out of step in 5.15).
        qApp->setStyleSheet(
            "QPushButton { color: red; border: 1px solid #d5d8de; text-decoration: line-through; } "
            "QLabel { color: blue; }");
        QWidget panel;
        panel.setObjectName("panel");
        panel.setStyleSheet(
            "#buy:hover { background: #00ff00; } QPushButton[role=\"primary\"] > QLabel { margin: 2px; } "
            "QWidget#panel QPushButton { padding: 4px 6px; }");
        auto* buy = new QPushButton("Buy", &panel);
        buy->setObjectName("buy");
        buy->setStyleSheet("font-weight: bold;");  // bare declarations apply to the widget itself
        const auto rules = LStyleSheetStyleHelper::objectStyleRules(buy);
        QStringList got;
        for (const auto& r : rules)
            got << r.strSource + " | " + r.strSelector + " | " + r.lstDeclarations.join("; ");
        QCOMPARE(got, QStringList(
                          {"qApp | QPushButton | color: red; border: 1px solid #d5d8de; text-decoration: line-through",
                           "QWidget#panel | #buy:hover | background: #00ff00",
                           "QWidget#panel | QWidget#panel QPushButton | padding: 4px 6px",
                           "QPushButton#buy | * | font-weight: bold"}));
        const QString html = LStyleSheetStyleHelper::objectStyleRulesHtmlString(buy);
        QVERIFY(html.contains("#buy:hover"));
        QVERIFY(!html.contains("QLabel"));
        QVERIFY(LStyleSheetStyleHelper::objectStyleRulesHtmlString(nullptr).isEmpty());
        QWidget plain;
        plain.setStyleSheet("QWidget { color: ");  // broken sheet: reported, not fatal
        QVERIFY(LStyleSheetStyleHelper::objectStyleRulesHtmlString(&plain).contains("does not parse"));
    }
    void parser_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("bool") << "TRUE" << int(QMetaType::Bool) << true << QVariant(true);
        QTest::newRow("bool bad") << "yes" << int(QMetaType::Bool) << false << QVariant();
        QTest::newRow("int") << " -42 " << int(QMetaType::Int) << true << QVariant(-42);
        QTest::newRow("int bad") << "4x" << int(QMetaType::Int) << false << QVariant();
        QTest::newRow("double") << "2.5" << int(QMetaType::Double) << true << QVariant(2.5);
        QTest::newRow("colour") << "#102030" << int(QMetaType::QColor) << true << QVariant(QColor(0x10, 0x20, 0x30));
        QTest::newRow("colour bad") << "#12" << int(QMetaType::QColor) << false << QVariant();
        QTest::newRow("size") << "120x30" << int(QMetaType::QSize) << true << QVariant(QSize(120, 30));
        QTest::newRow("point") << "-3, 7" << int(QMetaType::QPoint) << true << QVariant(QPoint(-3, 7));
        QTest::newRow("rect") << "1,2 30x40" << int(QMetaType::QRect) << true << QVariant(QRect(1, 2, 30, 40));
        QTest::newRow("rect bad") << "1,2,30,40" << int(QMetaType::QRect) << false << QVariant();
        QTest::newRow("rect past int") << "2147483000,0 2000x10" << int(QMetaType::QRect) << false << QVariant();
        QTest::newRow("int past range") << "99999999999" << int(QMetaType::Int) << false << QVariant();
        QTest::newRow("unsupported") << "x" << int(QMetaType::QVariantMap) << false << QVariant();
    }
    void parser() {
        QFETCH(QString, text);
        QFETCH(int, type);
        QFETCH(bool, ok);
        QFETCH(QVariant, value);
        QVariant out;
        QString error;
        QCOMPARE(ParseDebugVariable(text, type, &out, &error), ok);
        if (ok) {
            QCOMPARE(out, value);
            // What is shown reads back to the same value.
            QVariant again;
            QVERIFY(ParseDebugVariable(DebugVariableText(out), type, &again, &error));
            QCOMPARE(again, value);
        } else {
            QVERIFY(!error.isEmpty());
        }
    }
    void propertyEditing() {
        LxWidgetPropertyView view(nullptr);
        QSlider slider(Qt::Horizontal);
        slider.setObjectName("volume");
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(&slider, nullptr);
        QTableWidget* table = view.table();
        auto row = [&](const QString& name) {
            for (int r = 0; r < table->rowCount(); ++r)
                if (table->item(r, 0)->text() == name)
                    return r;
            return -1;
        };
        QVERIFY(row("objectName") >= 0);
        QCOMPARE(table->item(row("orientation"), 1)->text(), QStringLiteral("Horizontal"));
        table->item(row("maximum"), 1)->setText("250");
        QCOMPARE(slider.maximum(), 250);
        table->item(row("orientation"), 1)->setText("Vertical");  // enum by key name
        QCOMPARE(slider.orientation(), Qt::Vertical);
        table->item(row("maximum"), 1)->setText("lots");
        QCOMPARE(slider.maximum(), 250);
        QCOMPARE(table->item(row("maximum"), 1)->text(), QStringLiteral("250"));  // put back
        QVERIFY(view.statusLabel()->text().startsWith("Cannot set maximum"));
        // A phantom is read-only and shows its facts.
        PseudoWidget cell(QRect(1, 2, 3, 4), &slider, "NWTL", nullptr, "Cell",
                          QSharedPointer<const QMap<QString, QVariant>>::create(QMap<QString, QVariant>{{"row", 7}}));
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(cell, nullptr);
        QCOMPARE(table->item(row("text"), 1)->text(), QStringLiteral("NWTL"));
        QCOMPARE(table->item(row("row"), 1)->text(), QStringLiteral("7"));
        QVERIFY(!(table->item(row("row"), 1)->flags() & Qt::ItemIsEditable));
    }
    void eventLog() {
        QWidget host;  // the view lives in another window than the watched widget
        LxObjectEventView view(&host);
        QWidget target;
        target.setObjectName("target");
        target.show();
        QVERIFY(QTest::qWaitForWindowExposed(&target));
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(&target, nullptr);
        QCOMPARE(view.watched(), &target);
        view.filterEdit()->setText("Resize, Move");
        target.resize(120, 40);
        QEvent polish(QEvent::Polish);
        QCoreApplication::sendEvent(&target, &polish);
        const QString log = view.log()->toPlainText();
        QVERIFY(log.contains("Resize") && log.contains("-> 120x40"));
        QVERIFY(!log.contains("Polish"));
        QVERIFY(LxObjectEventView::PassesFilter("", QEvent::Paint));
        QVERIFY(!LxObjectEventView::PassesFilter("mouse", QEvent::Paint));
        // Bounded: old lines go.
        view.filterEdit()->clear();
        for (int i = 0; i < LxObjectEventView::kMaxLines + 50; ++i)
            QCoreApplication::sendEvent(&target, &polish);
        QCOMPARE(view.log()->blockCount(), LxObjectEventView::kMaxLines);
        // The inspector's own widgets are not watched.
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(view.filterEdit(), nullptr);
        QCOMPARE(view.watched(), nullptr);
    }
    void connectionsBothWays() {
        QPushButton button;
        button.setObjectName("buy");
        QSlider slider;
        slider.setObjectName("qty");
        QObject::connect(&button, SIGNAL(clicked()), &slider, SLOT(hide()));
        QObject::connect(&slider, &QSlider::valueChanged, &button, [] {});
        const auto out = LxObjectSignalSlotView::Outgoing(&button);
        bool found = false;
        for (const auto& c : out)
            found = found || (c.strSignal == "clicked(bool)" && c.strPeer == "QSlider#qty" && c.strMethod == "hide()");
        QVERIFY2(found, "clicked -> hide() listed");
        const auto in = LxObjectSignalSlotView::Incoming(&slider);
        QCOMPARE(in.size(), 1);
        QCOMPARE(in.first().strPeer, QStringLiteral("QPushButton#buy"));
        QCOMPARE(in.first().strMethod, QStringLiteral("hide()"));
        const auto out2 = LxObjectSignalSlotView::Outgoing(&slider);
        QCOMPARE(out2.size(), 1);
        QCOMPARE(out2.first().strMethod, QStringLiteral("<functor>"));
        QVERIFY(LxObjectSignalSlotView::Outgoing(nullptr).isEmpty());
    }
    void treeSearchAndGeometry() {
        QWidget top;
        top.setObjectName("TradeWindow");
        auto* panel = new QWidget(&top);
        panel->setObjectName("orderPanel");
        panel->setGeometry(10, 20, 100, 50);
        auto* buy = new QPushButton("Buy", panel);
        buy->setObjectName("buyButton");
        buy->setGeometry(5, 5, 40, 20);
        new QSlider(&top);
        top.show();
        QVERIFY(QTest::qWaitForWindowExposed(&top));
        LxWidgetTreeInfoView tree(nullptr);
        QTreeWidgetItem* buyItem = tree.itemOf(buy);
        QVERIFY(buyItem);
        tree.ApplySearch("BUYBUTTON");
        QVERIFY(!buyItem->isHidden());
        QVERIFY(!tree.itemOf(panel)->isHidden());  // ancestor of a match
        QVERIFY(tree.itemOf(top.findChild<QSlider*>())->isHidden());
        tree.ApplySearch(QString());
        QVERIFY(!tree.itemOf(top.findChild<QSlider*>())->isHidden());
        // Selection follows picks; a widget created later is found by rebuilding.
        auto* late = new QPushButton("Sell", panel);
        late->show();
        ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(late, nullptr);
        QVERIFY(tree.itemOf(late));
        QCOMPARE(tree.tree()->currentItem(), tree.itemOf(late));

        const QStringList lines = LxWidgetGeometryView::GeometryLines(buy);
        QCOMPARE(lines.value(0), QStringLiteral("in parent: (5, 5) 40 × 20"));
        QCOMPARE(lines.value(1), QStringLiteral("in window: (15, 25) 40 × 20"));
        QVERIFY(LxWidgetGeometryView::GeometryLines(PseudoWidget()).isEmpty());
    }
    void broadcastsSkipSenderAndRememberState() {
        Probe a, b;
        QWidget w;
        w.setObjectName("quote");
        ILxUISpyComponent::NotifyHoveredPseudoWidgetChanged(&w, ILxUISpyComponent::HoverSource::Mouse, &a);
        ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(&w, nullptr);
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(&w, &b);
        QWindow window;
        ILxUISpyComponent::NotifyDebugWindowChanged(&window, nullptr);
        QCOMPARE(a.log, QStringList({"click:quote", "select:quote", "window:1"}));
        QCOMPARE(b.log, QStringList({"hover:quote", "click:quote", "window:1"}));
        QCOMPARE(ILxUISpyComponent::HoveredPseudoWidget().widget(), &w);
        QCOMPARE(ILxUISpyComponent::SelectedPseudoWidget().widget(), &w);
        QCOMPARE(ILxUISpyComponent::DebugWindow(), &window);
    }
    void configAndHotKeys() {
        Probe a, b;
        ILxUISpyComponent::Config c;
        c.picking = true;
        c.figmaMode = true;
        ILxUISpyComponent::NotifyConfigChanged(c, nullptr);
        QVERIFY(ILxUISpyComponent::ms_config == c);
        QVERIFY(!a.previous.picking);
        QVERIFY(a.current.picking && a.current.figmaMode);

        // The first component that takes a key ends the round.
        a.takeKeys = true;
        QVERIFY(ILxUISpyComponent::NotifyHotKey(Qt::Key_F5, Qt::NoModifier, nullptr));
        QCOMPARE(a.log.count("key") + b.log.count("key"), 1);
        a.takeKeys = false;
        QVERIFY(!ILxUISpyComponent::NotifyHotKey(Qt::Key_F5, Qt::NoModifier, nullptr));
    }
    void registrationDuringBroadcast() {
        const int before = ILxUISpyComponent::ComponentCount();
        auto first = std::make_unique<Probe>();
        auto victim = std::make_unique<Probe>();
        std::unique_ptr<Probe> late;
        // The first component destroys the second and creates a third while the hover goes round.
        first->onHover = [&] {
            victim.reset();
            if (!late)
                late = std::make_unique<Probe>();
        };
        ILxUISpyComponent::NotifyHoveredPseudoWidgetChanged(PseudoWidget(), ILxUISpyComponent::HoverSource::Mouse,
                                                            nullptr);
        QCOMPARE(first->log, QStringList({"hover:"}));
        QVERIFY(late);
        QVERIFY(late->log.isEmpty());  // created during the round: not called in it
        // The victim was destroyed before its turn and never called.
        QCOMPARE(ILxUISpyComponent::ComponentCount(), before + 2);
        first->onHover = nullptr;
        ILxUISpyComponent::NotifyHoveredPseudoWidgetChanged(PseudoWidget(), ILxUISpyComponent::HoverSource::Mouse,
                                                            nullptr);
        QCOMPARE(late->log, QStringList({"hover:"}));
        first.reset();
        late.reset();
        QCOMPARE(ILxUISpyComponent::ComponentCount(), before);
    }
};

QTEST_MAIN(TestSpyViews)
#include "tst_SpyViews.moc"
