// The inspector's component base: shared configuration and broadcasts that stay safe while
// components come and go in the middle of one.

#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QWidget>
#include <QWindow>
#include <QtTest>

#include <functional>
#include <memory>

#include "LxTestSupport.h"

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

class TestSpyComponent : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() {
        ILxUISpyComponent::ResetSharedState();
        lxtest::ResetGlobals();
    }
    void broadcastsSkipSenderAndRememberState();
    void configAndHotKeys();
    void registrationDuringBroadcast();
};

void TestSpyComponent::broadcastsSkipSenderAndRememberState() {
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

void TestSpyComponent::configAndHotKeys() {
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

void TestSpyComponent::registrationDuringBroadcast() {
    const int before = ILxUISpyComponent::ComponentCount();
    auto first = std::make_unique<Probe>();
    auto victim = std::make_unique<Probe>();
    std::unique_ptr<Probe> late;
    Probe* victimRaw = victim.get();
    // The first component destroys the second and creates a third while the hover goes round.
    first->onHover = [&] {
        victim.reset();
        if (!late)
            late = std::make_unique<Probe>();
    };
    ILxUISpyComponent::NotifyHoveredPseudoWidgetChanged(PseudoWidget(), ILxUISpyComponent::HoverSource::Mouse, nullptr);
    QCOMPARE(first->log, QStringList({"hover:"}));
    QVERIFY(late);
    QVERIFY(late->log.isEmpty());  // created during the round: not called in it
    // The victim was destroyed before its turn and never called; the late one may reuse its address.
    Q_UNUSED(victimRaw);
    QCOMPARE(ILxUISpyComponent::ComponentCount(), before + 2);
    first->onHover = nullptr;
    ILxUISpyComponent::NotifyHoveredPseudoWidgetChanged(PseudoWidget(), ILxUISpyComponent::HoverSource::Mouse, nullptr);
    QCOMPARE(late->log, QStringList({"hover:"}));
    first.reset();
    late.reset();
    QCOMPARE(ILxUISpyComponent::ComponentCount(), before);
}

QTEST_MAIN(TestSpyComponent)
#include "tst_SpyComponent.moc"
