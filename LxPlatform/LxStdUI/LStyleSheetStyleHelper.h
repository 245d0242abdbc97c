#pragma once
// Answers "which style-sheet rules apply to this widget?" for developer tools. The application's
// style sheet and the style sheets of the widget and of each of its ancestors are parsed with Qt's
// own CSS parser and matched against the widget the way the style-sheet style matches them (type
// selectors through the class hierarchy, "#objectName", "[property=value]", ".Class", descendant
// and child combinators). Pseudo-states (":hover", ":checked") are not evaluated: a rule that
// applies to the widget in some state is listed with its selector, so the reader sees every rule
// that can style it.
//
// The HTML lists the sources from the weakest (the application) to the strongest (the widget's own
// sheet); inside one source the rules keep their order. A sheet that does not parse is reported as
// such and skipped. Selectors and values are HTML-escaped.

#include <LxStdUI/LxStdUIExport.h>

#include <QString>
#include <QStringList>

class QWidget;

class LXSTDUI_EXPORT LStyleSheetStyleHelper {
public:
    struct Rule {
        QString strSource;            // "qApp" or "ClassName#objectName" of the widget whose sheet holds it
        QString strSelector;          // the matching selectors, comma-separated, as written
        QStringList lstDeclarations;  // "property: value" each
    };
    // The rules that apply to w, weakest source first; empty for null.
    static QList<Rule> objectStyleRules(const QWidget* w);
    // The same as an HTML text ready for a QTextBrowser.
    static QString objectStyleRulesHtmlString(const QWidget* w);
};
