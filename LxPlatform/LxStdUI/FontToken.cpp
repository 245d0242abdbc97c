#include <LxStdUI/FontToken.h>

#include <LxStdUI/LWidgetUtil.h>
#include <LxStdUI/LxStdUILog_p.h>

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>
#include <QWidget>

#include <algorithm>

namespace {

// Numbered table; the numbers are part of the interface (hosts say "token 6").
const LFontTokenLoader::FontToken kTable[] = {
    {1, QStringLiteral("Display1"), 40, QFont::Bold},     {2, QStringLiteral("Display2"), 32, QFont::Bold},
    {3, QStringLiteral("BigTitle1"), 24, QFont::Bold},    {4, QStringLiteral("BigTitle2"), 20, QFont::Bold},
    {5, QStringLiteral("BigTitle3"), 16, QFont::Normal},  {6, QStringLiteral("body1"), 14, QFont::Normal},
    {7, QStringLiteral("title1"), 18, QFont::Bold},       {8, QStringLiteral("title2"), 16, QFont::Bold},
    {9, QStringLiteral("title3"), 14, QFont::Bold},       {10, QStringLiteral("body2"), 13, QFont::Normal},
    {11, QStringLiteral("caption1"), 12, QFont::Normal},  {12, QStringLiteral("caption2"), 11, QFont::Normal},
    {13, QStringLiteral("label1"), 14, QFont::DemiBold},  {14, QStringLiteral("label2"), 12, QFont::DemiBold},
    {15, QStringLiteral("subtitle1"), 15, QFont::Normal}, {16, QStringLiteral("tiny"), 10, QFont::Normal},
};

int CssWeight(int qtWeight) {
    switch (qtWeight) {
    case QFont::Bold: return 700;
    case QFont::DemiBold: return 600;
    case QFont::Medium: return 500;
    default: return 400;
    }
}

class StyleSheetFilter : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* obj, QEvent* e) override {
        if (e->type() != QEvent::StyleChange && e->type() != QEvent::Polish)
            return false;
        if (!obj->isWidgetType())
            return false;
        auto* w = static_cast<QWidget*>(obj);
        const QString qss = w->styleSheet();
        if (qss.isEmpty() || !qss.contains(QLatin1String("font-token")))
            return false;
        const QString resolved = LFontTokenLoader::resolveStyleSheet(qss);
        if (resolved != qss)
            w->setStyleSheet(resolved);  // sends StyleChange again; the text no longer matches
        return false;
    }
};

}  // namespace

const QList<LFontTokenLoader::FontToken>& LFontTokenLoader::getAllFontTokens() {
    static const QList<FontToken> s_sorted = [] {
        QList<FontToken> list(std::begin(kTable), std::end(kTable));
        std::stable_sort(list.begin(), list.end(), [](const FontToken& a, const FontToken& b) {
            if (a.i32PixelSize != b.i32PixelSize)
                return a.i32PixelSize > b.i32PixelSize;
            return a.i32Weight > b.i32Weight;
        });
        return list;
    }();
    return s_sorted;
}

QString LFontTokenLoader::getSmallerFontToken(const QString& name) {
    const QList<FontToken>& all = getAllFontTokens();
    for (int i = 0; i < all.size(); ++i)
        if (all[i].strName == name)
            return i + 1 < all.size() ? all[i + 1].strName : QString();
    return QString();
}

bool LFontTokenLoader::hasFontToken(const QString& name) { return fontToken(name).i32Number != 0; }

LFontTokenLoader::FontToken LFontTokenLoader::fontToken(const QString& name) {
    for (const FontToken& t : kTable)
        if (t.strName == name)
            return t;
    return FontToken();
}

QString LFontTokenLoader::fontTokenName(int i32Number) {
    for (const FontToken& t : kTable)
        if (t.i32Number == i32Number)
            return t.strName;
    return QString();
}

QStringList LFontTokenLoader::families() { return {QStringLiteral("Noto Sans CJK SC"), QStringLiteral("DejaVu Sans")}; }

QFont LFontTokenLoader::font(const QString& name) {
    const FontToken t = fontToken(name);
    if (t.i32Number == 0)
        return QGuiApplication::font();
    QFont f;
    f.setFamilies(families());
    f.setFamily(families().constFirst());
    f.setPixelSize(t.i32PixelSize);
    f.setWeight(t.i32Weight);
    return f;
}

QFont LFontTokenLoader::font(int i32Number) { return font(fontTokenName(i32Number)); }

QSizeF LFontTokenLoader::measureText(const QString& name, const QString& text) {
    return lx_std_ui::LWidgetUtil::measureText(font(name), text);
}

int LFontTokenLoader::pixelSize(const QString& name) {
    const FontToken t = fontToken(name);
    return t.i32Number == 0 ? -1 : t.i32PixelSize;
}

QString LFontTokenLoader::resolveStyleSheet(const QString& qss) {
    static const QRegularExpression re(QStringLiteral("font-token\\s*:\\s*([A-Za-z0-9_]+)\\s*;?"));
    QString out;
    int last = 0;
    auto it = re.globalMatch(qss);
    while (it.hasNext()) {
        const QRegularExpressionMatch m = it.next();
        const FontToken t = fontToken(m.captured(1));
        out += qss.midRef(last, m.capturedStart() - last);
        if (t.i32Number == 0) {
            static QSet<QString> s_logged;
            if (!s_logged.contains(m.captured(1))) {
                s_logged.insert(m.captured(1));
                LXSTDUI_LOG_WARN("unknown font token \"{}\" in a style sheet", m.captured(1));
            }
            out += QStringLiteral("/*lxft-unknown:%1*/").arg(m.captured(1));
        } else {
            out += QStringLiteral("font-family:\"%1\"; font-size:%2px; font-weight:%3; /*lxft:%4*/")
                       .arg(families().constFirst())
                       .arg(t.i32PixelSize)
                       .arg(CssWeight(t.i32Weight))
                       .arg(t.strName);
        }
        last = m.capturedEnd();
    }
    if (last == 0)
        return qss;
    out += qss.midRef(last);
    return out;
}

void LFontTokenLoader::installStyleSheetFilter() {
    // One filter per application; it goes with the application object, and a later one gets its own.
    static QPointer<StyleSheetFilter> s_pFilter;
    if (s_pFilter || !qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    s_pFilter = new StyleSheetFilter(QCoreApplication::instance());
    QCoreApplication::instance()->installEventFilter(s_pFilter);
}

static void lxstdui_install_font_filter_at_startup() { LFontTokenLoader::installStyleSheetFilter(); }
Q_COREAPP_STARTUP_FUNCTION(lxstdui_install_font_filter_at_startup)
