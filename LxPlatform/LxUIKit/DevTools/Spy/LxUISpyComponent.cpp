#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QPointer>
#include <QWindow>

#include <algorithm>
#include <functional>
#include <vector>

ILxUISpyComponent::Config ILxUISpyComponent::ms_config;

namespace {

struct Registration {
    ILxUISpyComponent* component;
    quint64 serial;  // tells a new component apart from a dead one at the same address
};

struct SharedState {
    std::vector<Registration> components;
    quint64 nextSerial = 1;
    PseudoWidget hovered;
    PseudoWidget selected;
    QPointer<QWindow> debugWindow;
};

SharedState& State() {
    static SharedState s_state;
    return s_state;
}

bool IsRegistered(const Registration& r) {
    const auto& v = State().components;
    return std::any_of(v.begin(), v.end(),
                       [&r](const Registration& x) { return x.component == r.component && x.serial == r.serial; });
}

// Calls fn on a snapshot of the components, skipping the sender and any component that went away
// meanwhile. Stops early when fn returns true.
bool Broadcast(ILxUISpyComponent* sender, const std::function<bool(ILxUISpyComponent*)>& fn) {
    LXUIKIT_ASSERT_MAIN_THREAD();
    const std::vector<Registration> snapshot = State().components;
    for (const Registration& r : snapshot) {
        if (r.component == sender || !IsRegistered(r))
            continue;
        if (fn(r.component))
            return true;
    }
    return false;
}

}  // namespace

ILxUISpyComponent::ILxUISpyComponent() { State().components.push_back({this, State().nextSerial++}); }

ILxUISpyComponent::~ILxUISpyComponent() {
    auto& v = State().components;
    v.erase(std::remove_if(v.begin(), v.end(), [this](const Registration& r) { return r.component == this; }), v.end());
}

void ILxUISpyComponent::NotifyHoveredPseudoWidgetChanged(const PseudoWidget& pw, HoverSource source,
                                                         ILxUISpyComponent* sender) {
    State().hovered = pw;
    Broadcast(sender, [&](ILxUISpyComponent* c) {
        c->OnHoveredPseudoWidgetChanged(pw, source);
        return false;
    });
}

void ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(const PseudoWidget& pw, ILxUISpyComponent* sender) {
    State().selected = pw;
    Broadcast(sender, [&](ILxUISpyComponent* c) {
        c->OnSelectedPseudoWidgetChanged(pw, true);
        return false;
    });
}

void ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(const PseudoWidget& pw, ILxUISpyComponent* sender) {
    State().selected = pw;
    Broadcast(sender, [&](ILxUISpyComponent* c) {
        c->OnSelectedPseudoWidgetChanged(pw, false);
        return false;
    });
}

void ILxUISpyComponent::NotifyDebugWindowChanged(QWindow* window, ILxUISpyComponent* sender) {
    State().debugWindow = window;
    Broadcast(sender, [&](ILxUISpyComponent* c) {
        c->OnDebugWindowChanged(window);
        return false;
    });
}

void ILxUISpyComponent::NotifyConfigChanged(const Config& config, ILxUISpyComponent* sender) {
    const Config previous = ms_config;
    ms_config = config;
    Broadcast(sender, [&](ILxUISpyComponent* c) {
        c->OnConfigChanged(previous, config);
        return false;
    });
}

bool ILxUISpyComponent::NotifyHotKey(Qt::Key key, Qt::KeyboardModifiers modifiers, ILxUISpyComponent* sender) {
    return Broadcast(sender, [&](ILxUISpyComponent* c) { return c->OnHotKey(key, modifiers); });
}

PseudoWidget ILxUISpyComponent::HoveredPseudoWidget() { return State().hovered; }
PseudoWidget ILxUISpyComponent::SelectedPseudoWidget() { return State().selected; }
QWindow* ILxUISpyComponent::DebugWindow() { return State().debugWindow.data(); }
int ILxUISpyComponent::ComponentCount() { return int(State().components.size()); }

void ILxUISpyComponent::ResetSharedState() {
    State().hovered.clear();
    State().selected.clear();
    State().debugWindow.clear();
    ms_config = Config();
}
