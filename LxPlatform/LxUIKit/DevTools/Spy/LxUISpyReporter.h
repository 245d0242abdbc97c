#pragma once
// The inspector's pick reporter: when enabled, every item the inspector selects (a click while
// picking, or a choice in its widget tree) becomes one report record in the log (level "report"),
// so a session of picks can be read back from the log file or the developer tools window.
//
// A record reads, for example:
//   spy pick (click): class=QPushButton objectName=PlaceOrderButton
//   path=GalleryWindow/GalleryCentral/[QStackedWidget]/InspectorPage/InnerPanel/PlaceOrderButton
//   geometry=(12, 40 120x30) in window
// and, for a phantom, adds container=<class>#<name> text="<item text>".
//
// Choices made here:
// - The path runs from the window down to the item; an object without a name shows its class in
//   brackets, so the path never has empty steps. A phantom's path ends at its container.
// - The geometry is given in the window's coordinates, so records of one window compare directly.
// - Off by default. The switch is process-wide and does not depend on the developer-tools build
//   option: a release build may still be asked to report picks.
// GUI thread only.

#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QString>

class LXUIKIT_EXPORT ILxUISpyReporter : public ILxUISpyComponent {
public:
    static void SetEnabled(bool enabled);
    static bool IsEnabled();
    // The text of the record written for a pick; empty for a null item.
    static QString ReportText(const PseudoWidget& pw, bool clicked);
    // The path of object names from the item's window down to the item.
    static QString ObjectPath(const PseudoWidget& pw);

protected:
    ILxUISpyReporter() = default;
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool clicked) override;
};
