#pragma once
// Base of every part of the widget inspector (the tool window, its views, the highlight overlay).
// Components share one configuration and hear about each other through static broadcasts: the
// hovered and the selected item, the native window under the last pick, configuration changes and
// hot keys. A broadcast reaches every registered component except its sender.
//
// Registration is automatic (constructor and destructor). A component created during a broadcast
// does not receive that broadcast; one destroyed during a broadcast is not called after its
// destruction. GUI thread only.
//
// The last hovered and selected items and the debug window are remembered, so a view created later
// starts from the current state.

#include <LxUIKit/DevTools/Spy/PseudoWidget.h>
#include <LxUIKit/LxUIKitExport.h>

#include <Qt>

class QWindow;

class LXUIKIT_EXPORT ILxUISpyComponent {
public:
    enum class HoverSource {
        Mouse,  // the mouse moved while picking
        Wheel,  // the wheel walked the hovered item to a parent or back (Figma mode)
        View,   // a view (the widget tree) pointed at an item
    };
    struct Config {
        bool picking = false;         // events of the application are captured and turned into picks
        bool figmaMode = false;       // the wheel walks the hovered item to its parents
        bool copyReviewMode = false;  // the texts around the hovered item are shown for proof-reading
        bool keepPicking = false;     // a pick does not end picking
        bool operator==(const Config& o) const {
            return picking == o.picking && figmaMode == o.figmaMode && copyReviewMode == o.copyReviewMode &&
                   keepPicking == o.keepPicking;
        }
        bool operator!=(const Config& o) const { return !(*this == o); }
    };

    // The shared configuration. Change it only through NotifyConfigChanged.
    static Config ms_config;

    ILxUISpyComponent();
    virtual ~ILxUISpyComponent();
    ILxUISpyComponent(const ILxUISpyComponent&) = delete;
    ILxUISpyComponent& operator=(const ILxUISpyComponent&) = delete;

    static void NotifyHoveredPseudoWidgetChanged(const PseudoWidget& pw, HoverSource source, ILxUISpyComponent* sender);
    // A pick by a click: the item becomes the selection.
    static void NotifySelectedPseudoWidgetChangedAndClicked(const PseudoWidget& pw, ILxUISpyComponent* sender);
    // A selection made inside the inspector (for example in the widget tree).
    static void NotifySelectedPseudoWidgetChanged(const PseudoWidget& pw, ILxUISpyComponent* sender);
    static void NotifyDebugWindowChanged(QWindow* window, ILxUISpyComponent* sender);
    static void NotifyConfigChanged(const Config& config, ILxUISpyComponent* sender);
    // Offered to each component in turn until one takes it; returns whether one did.
    static bool NotifyHotKey(Qt::Key key, Qt::KeyboardModifiers modifiers, ILxUISpyComponent* sender);

    static PseudoWidget HoveredPseudoWidget();
    static PseudoWidget SelectedPseudoWidget();
    static QWindow* DebugWindow();
    static int ComponentCount();
    // Forgets the remembered state and the configuration (tests, and the last window closing).
    static void ResetSharedState();

protected:
    virtual void OnHoveredPseudoWidgetChanged(const PseudoWidget&, HoverSource) {}
    virtual void OnSelectedPseudoWidgetChanged(const PseudoWidget&, bool /*clicked*/) {}
    virtual void OnDebugWindowChanged(QWindow*) {}
    virtual void OnConfigChanged(const Config& /*previous*/, const Config& /*current*/) {}
    virtual bool OnHotKey(Qt::Key, Qt::KeyboardModifiers) { return false; }
};
