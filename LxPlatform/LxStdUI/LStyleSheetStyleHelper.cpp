#include <LxStdUI/LStyleSheetStyleHelper.h>

#include <LxStdUI/LxStdUILog_p.h>

#include <QtGui/private/qcssparser_p.h>
#include <QApplication>
#include <QMap>
#include <QMetaObject>
#include <QVariant>
#include <QWidget>

namespace {

// Widgets as CSS nodes, matched the way the style-sheet style matches them.
class WidgetSelector : public QCss::StyleSelector {
public:
    WidgetSelector() { nameCaseSensitivity = Qt::CaseInsensitive; }

    static const QWidget* W(NodePtr n) { return static_cast<const QWidget*>(n.ptr); }

    QStringList nodeNames(NodePtr node) const override {
        QStringList names;
        for (const QMetaObject* mo = W(node)->metaObject(); mo; mo = mo->superClass())
            names << QString::fromLatin1(mo->className()).replace(QLatin1String("::"), QLatin1String("--"));
        names << QStringLiteral("*");
        return names;
    }
    QString attribute(NodePtr node, const QString& name) const override {
        const QWidget* w = W(node);
        if (name == QLatin1String("class"))
            return QString::fromLatin1(w->metaObject()->className()).replace(QLatin1String("::"), QLatin1String("--"));
        const QVariant value = w->property(name.toLatin1().constData());
        if (value.type() == QVariant::StringList)
            return value.toStringList().join(QLatin1Char(' '));
        return value.toString();
    }
    bool hasAttributes(NodePtr) const override { return true; }
    QStringList nodeIds(NodePtr node) const override { return QStringList(W(node)->objectName()); }
    bool isNullNode(NodePtr node) const override { return node.ptr == nullptr; }
    NodePtr parentNode(NodePtr node) const override {
        NodePtr n;
        n.ptr = W(node)->isWindow() ? nullptr : const_cast<QWidget*>(W(node)->parentWidget());
        return n;
    }
    NodePtr previousSiblingNode(NodePtr) const override {
        NodePtr n;
        n.ptr = nullptr;
        return n;
    }
    NodePtr duplicateNode(NodePtr node) const override { return node; }
    void freeNode(NodePtr) const override {}
};

QString BasicSelectorText(const QCss::BasicSelector& b) {
    QString s = b.elementName;
    for (const QString& id : b.ids)
        s += QLatin1Char('#') + id;
    for (const QCss::AttributeSelector& a : b.attributeSelectors) {
        if (a.name == QLatin1String("class") && a.valueMatchCriterium == QCss::AttributeSelector::MatchEqual) {
            s += QLatin1Char('.') + a.value;
            continue;
        }
        static const char* const kOps[] = {"", "=", "~=", "|=", "^=", "$=", "*="};
        s += QLatin1Char('[') + a.name;
        if (a.valueMatchCriterium != QCss::AttributeSelector::NoMatch)
            s += QLatin1String(kOps[a.valueMatchCriterium]) + QLatin1Char('"') + a.value + QLatin1Char('"');
        s += QLatin1Char(']');
    }
    for (const QCss::Pseudo& p : b.pseudos) {
        s += QLatin1Char(':');
        if (p.negated)
            s += QLatin1Char('!');
        s += p.name;
        if (!p.function.isEmpty())
            s += QLatin1Char('(') + p.function + QLatin1Char(')');
    }
    return s.isEmpty() ? QStringLiteral("*") : s;
}

QString SelectorText(const QCss::Selector& sel) {
    // Basic selectors are stored outermost first, each with its relation to the next one.
    QString s;
    for (const QCss::BasicSelector& b : sel.basicSelectors) {
        s += BasicSelectorText(b);
        switch (b.relationToNext) {
        case QCss::BasicSelector::MatchNextSelectorIfAncestor: s += QLatin1Char(' '); break;
        case QCss::BasicSelector::MatchNextSelectorIfParent: s += QLatin1String(" > "); break;
        case QCss::BasicSelector::MatchNextSelectorIfDirectAdjecent: s += QLatin1String(" + "); break;
        case QCss::BasicSelector::MatchNextSelectorIfIndirectAdjecent: s += QLatin1String(" ~ "); break;
        default: break;
        }
    }
    return s;
}

// The written name of a keyword value. Qt's own Value::toString() looks keywords up through a
// table that is out of step with the keyword list in Qt 5.15 ("solid" comes back as
// "small-caps"), so the names are spelled out here, by the keyword constants themselves.
QString KnownValueName(int id) {
    switch (id) {
    case QCss::Value_Normal: return QStringLiteral("normal");
    case QCss::Value_Pre: return QStringLiteral("pre");
    case QCss::Value_NoWrap: return QStringLiteral("nowrap");
    case QCss::Value_PreLine: return QStringLiteral("pre-line");
    case QCss::Value_PreWrap: return QStringLiteral("pre-wrap");
    case QCss::Value_Small: return QStringLiteral("small");
    case QCss::Value_Medium: return QStringLiteral("medium");
    case QCss::Value_Large: return QStringLiteral("large");
    case QCss::Value_XLarge: return QStringLiteral("x-large");
    case QCss::Value_XXLarge: return QStringLiteral("xx-large");
    case QCss::Value_Italic: return QStringLiteral("italic");
    case QCss::Value_Oblique: return QStringLiteral("oblique");
    case QCss::Value_Bold: return QStringLiteral("bold");
    case QCss::Value_Underline: return QStringLiteral("underline");
    case QCss::Value_Overline: return QStringLiteral("overline");
    case QCss::Value_LineThrough: return QStringLiteral("line-through");
    case QCss::Value_Sub: return QStringLiteral("sub");
    case QCss::Value_Super: return QStringLiteral("super");
    case QCss::Value_Left: return QStringLiteral("left");
    case QCss::Value_Right: return QStringLiteral("right");
    case QCss::Value_Top: return QStringLiteral("top");
    case QCss::Value_Bottom: return QStringLiteral("bottom");
    case QCss::Value_Center: return QStringLiteral("center");
    case QCss::Value_Native: return QStringLiteral("native");
    case QCss::Value_Solid: return QStringLiteral("solid");
    case QCss::Value_Dotted: return QStringLiteral("dotted");
    case QCss::Value_Dashed: return QStringLiteral("dashed");
    case QCss::Value_DotDash: return QStringLiteral("dot-dash");
    case QCss::Value_DotDotDash: return QStringLiteral("dot-dot-dash");
    case QCss::Value_Double: return QStringLiteral("double");
    case QCss::Value_Groove: return QStringLiteral("groove");
    case QCss::Value_Ridge: return QStringLiteral("ridge");
    case QCss::Value_Inset: return QStringLiteral("inset");
    case QCss::Value_Outset: return QStringLiteral("outset");
    case QCss::Value_Wave: return QStringLiteral("wave");
    case QCss::Value_Middle: return QStringLiteral("middle");
    case QCss::Value_Auto: return QStringLiteral("auto");
    case QCss::Value_Always: return QStringLiteral("always");
    case QCss::Value_None: return QStringLiteral("none");
    case QCss::Value_Transparent: return QStringLiteral("transparent");
    case QCss::Value_Disc: return QStringLiteral("disc");
    case QCss::Value_Circle: return QStringLiteral("circle");
    case QCss::Value_Square: return QStringLiteral("square");
    case QCss::Value_Decimal: return QStringLiteral("decimal");
    case QCss::Value_LowerAlpha: return QStringLiteral("lower-alpha");
    case QCss::Value_UpperAlpha: return QStringLiteral("upper-alpha");
    case QCss::Value_LowerRoman: return QStringLiteral("lower-roman");
    case QCss::Value_UpperRoman: return QStringLiteral("upper-roman");
    case QCss::Value_SmallCaps: return QStringLiteral("small-caps");
    case QCss::Value_Uppercase: return QStringLiteral("uppercase");
    case QCss::Value_Lowercase: return QStringLiteral("lowercase");
    case QCss::Value_WindowText: return QStringLiteral("window-text");
    case QCss::Value_Button: return QStringLiteral("button");
    case QCss::Value_Light: return QStringLiteral("light");
    case QCss::Value_Midlight: return QStringLiteral("midlight");
    case QCss::Value_Dark: return QStringLiteral("dark");
    case QCss::Value_Mid: return QStringLiteral("mid");
    case QCss::Value_Text: return QStringLiteral("text");
    case QCss::Value_BrightText: return QStringLiteral("bright-text");
    case QCss::Value_ButtonText: return QStringLiteral("button-text");
    case QCss::Value_Base: return QStringLiteral("base");
    case QCss::Value_Window: return QStringLiteral("window");
    case QCss::Value_Shadow: return QStringLiteral("shadow");
    case QCss::Value_Highlight: return QStringLiteral("highlight");
    case QCss::Value_HighlightedText: return QStringLiteral("highlighted-text");
    case QCss::Value_Link: return QStringLiteral("link");
    case QCss::Value_LinkVisited: return QStringLiteral("link-visited");
    case QCss::Value_AlternateBase: return QStringLiteral("alternate-base");
    case QCss::Value_Disabled: return QStringLiteral("disabled");
    case QCss::Value_Active: return QStringLiteral("active");
    case QCss::Value_Selected: return QStringLiteral("selected");
    case QCss::Value_On: return QStringLiteral("on");
    case QCss::Value_Off: return QStringLiteral("off");
    default: return QString();
    }
}

QString DeclarationText(const QCss::Declaration& d) {
    QStringList values;
    for (const QCss::Value& v : qAsConst(d.d->values)) {
        if (v.type == QCss::Value::TermOperatorComma) {
            if (!values.isEmpty())
                values.last() += QLatin1Char(',');
            continue;
        }
        QString text = v.type == QCss::Value::KnownIdentifier ? KnownValueName(v.variant.toInt()) : QString();
        if (text.isEmpty())
            text = v.toString();
        if (v.type == QCss::Value::String)
            text = QLatin1Char('"') + text + QLatin1Char('"');
        values << text;
    }
    QString out = d.d->property + QLatin1String(": ") + values.join(QLatin1Char(' '));
    if (d.d->important)
        out += QLatin1String(" !important");
    return out;
}

bool ParseSheet(const QString& css, QCss::StyleSheet* sheet) {
    QCss::Parser parser(css);
    if (parser.parse(sheet, Qt::CaseInsensitive))
        return true;
    // A widget's own sheet may be bare declarations, which apply to the widget itself.
    *sheet = QCss::StyleSheet();
    QCss::Parser bare(QStringLiteral("* {") + css + QLatin1Char('}'));
    return bare.parse(sheet, Qt::CaseInsensitive);
}

QString SourceName(const QWidget* w) {
    QString s = QString::fromLatin1(w->metaObject()->className());
    if (!w->objectName().isEmpty())
        s += QLatin1Char('#') + w->objectName();
    return s;
}

}  // namespace

QList<LStyleSheetStyleHelper::Rule> LStyleSheetStyleHelper::objectStyleRules(const QWidget* w) {
    QList<Rule> rules;
    if (!w)
        return rules;
    struct Source {
        QString strName;
        QString strCss;
        bool bOwn;
    };
    QList<Source> sources;
    for (const QWidget* p = w; p; p = p->isWindow() ? nullptr : p->parentWidget()) {
        if (!p->styleSheet().trimmed().isEmpty())
            sources.prepend({SourceName(p), p->styleSheet(), p == w});
    }
    if (qApp && !qApp->styleSheet().trimmed().isEmpty())
        sources.prepend({QStringLiteral("qApp"), qApp->styleSheet(), false});

    WidgetSelector selector;
    QCss::StyleSelector::NodePtr node;
    node.ptr = const_cast<QWidget*>(w);
    for (const Source& src : sources) {
        QCss::StyleSheet sheet;
        if (!ParseSheet(src.strCss, &sheet)) {
            LXSTDUI_LOG_WARN("style sheet of {} does not parse", src.strName.toStdString());
            rules.append({src.strName, QStringLiteral("(style sheet does not parse)"), {}});
            continue;
        }
        sheet.origin = QCss::StyleSheetOrigin_Inline;
        selector.styleSheets = {sheet};
        // The parser indexes rules by name and splits rules with several selectors, keeping each
        // rule's position in the sheet as its order; list them back in the sheet's own order, with
        // the selectors of one rule that match joined again.
        const QVector<QCss::StyleRule> matched = selector.styleRulesForNode(node);
        QMap<int, Rule> byOrder;
        for (const QCss::StyleRule& m : matched) {
            Rule& out = byOrder[m.order];
            out.strSource = src.strName;
            for (const QCss::Selector& sel : m.selectors) {
                const QString text = SelectorText(sel);
                if (!out.strSelector.split(QLatin1String(", ")).contains(text))
                    out.strSelector += (out.strSelector.isEmpty() ? QString() : QStringLiteral(", ")) + text;
            }
            if (out.lstDeclarations.isEmpty()) {
                for (const QCss::Declaration& d : m.declarations)
                    out.lstDeclarations << DeclarationText(d);
            }
        }
        for (const Rule& r : qAsConst(byOrder))
            rules.append(r);
    }
    return rules;
}

QString LStyleSheetStyleHelper::objectStyleRulesHtmlString(const QWidget* w) {
    if (!w)
        return QString();
    const QList<Rule> rules = objectStyleRules(w);
    if (rules.isEmpty())
        return QStringLiteral("<p><i>No style-sheet rule applies to %1.</i></p>").arg(SourceName(w).toHtmlEscaped());
    QString html;
    QString lastSource;
    for (const Rule& r : rules) {
        if (r.strSource != lastSource) {
            html += QStringLiteral("<p style=\"color:gray\">/* %1 */</p>").arg(r.strSource.toHtmlEscaped());
            lastSource = r.strSource;
        }
        html += QStringLiteral("<p><b>%1</b> {<br/>").arg(r.strSelector.toHtmlEscaped());
        for (const QString& d : r.lstDeclarations)
            html += QStringLiteral("&nbsp;&nbsp;&nbsp;&nbsp;%1;<br/>").arg(d.toHtmlEscaped());
        html += QStringLiteral("}</p>");
    }
    return html;
}
