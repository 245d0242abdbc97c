// Style-sheet rule matching of the widget picker's properties view, from untrusted style sheets.
// The input holds up to three parts separated by "\n%%\n": the object name of the inspected button,
// the style sheet of its window, and the button's own style sheet. A widget tree (window > frame
// with a "tone" property > button) is matched against both sheets. Nothing may crash; every rule
// must name one of the two sheets, the window's before the button's; the HTML must carry every
// selector escaped; and asking twice gives the same answer.

#include "FuzzApp.h"

#include <LxStdUI/LStyleSheetStyleHelper.h>

#include <QFrame>
#include <QPushButton>
#include <QVBoxLayout>

#include <cstdint>
#include <cstdlib>

namespace {

struct Tree {
    QWidget window;
    QFrame* pFrame = new QFrame(&window);
    QPushButton* pButton = new QPushButton(QStringLiteral("Buy NWCX"), pFrame);
    Tree() {
        window.setObjectName(QStringLiteral("window"));
        pFrame->setObjectName(QStringLiteral("card"));
        pFrame->setProperty("tone", QStringLiteral("up"));
    }
};

bool SameRules(const QList<LStyleSheetStyleHelper::Rule>& a, const QList<LStyleSheetStyleHelper::Rule>& b) {
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (a[i].strSource != b[i].strSource || a[i].strSelector != b[i].strSelector ||
            a[i].lstDeclarations != b[i].lstDeclarations)
            return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    static Tree* s_pTree = new Tree;
    const QStringList parts =
        QString::fromUtf8(reinterpret_cast<const char*>(data), int(size)).split(QStringLiteral("\n%%\n"));
    QPushButton* button = s_pTree->pButton;
    button->setObjectName(parts.value(0).left(64));
    s_pTree->window.setStyleSheet(parts.value(1));
    button->setStyleSheet(parts.value(2));

    const QString windowSource = QStringLiteral("QWidget#window");
    const QString buttonSource = button->objectName().isEmpty() ? QStringLiteral("QPushButton")
                                                                : QStringLiteral("QPushButton#") + button->objectName();
    const QList<LStyleSheetStyleHelper::Rule> rules = LStyleSheetStyleHelper::objectStyleRules(button);
    bool bSeenButton = false;
    for (const LStyleSheetStyleHelper::Rule& r : rules) {
        // Window rules come first, and only a sheet that was set can be a source.
        if (r.strSource == windowSource && !bSeenButton && !s_pTree->window.styleSheet().trimmed().isEmpty())
            continue;
        if (r.strSource == buttonSource && !button->styleSheet().trimmed().isEmpty()) {
            bSeenButton = true;
            continue;
        }
        abort();  // a rule from nowhere, or the sources out of order
    }
    const QString html = LStyleSheetStyleHelper::objectStyleRulesHtmlString(button);
    for (const LStyleSheetStyleHelper::Rule& r : rules) {
        if (!html.contains(r.strSelector.toHtmlEscaped()))
            abort();
    }
    if (!SameRules(rules, LStyleSheetStyleHelper::objectStyleRules(button)))
        abort();
    return 0;
}
