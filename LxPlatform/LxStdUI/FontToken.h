#pragma once
// The typography scale: 16 named font tokens, numbered 1..16 in the order of the table in
// FontToken.cpp. getAllFontTokens() lists them from largest to smallest (pixel size, then weight),
// which is the order getSmallerFontToken() steps through.
//
// Style sheets may say "font-token:NAME;" (Qt's style sheets know no such property): a filter on
// the application rewrites such declarations into the token's font-family, font-size and
// font-weight whenever a widget's style sheet is set. An unknown token name is left as it is and
// logged once.

#include <LxStdUI/LxStdUIExport.h>
#include <QFont>
#include <QSizeF>
#include <QString>
#include <QStringList>

class LXSTDUI_EXPORT LFontTokenLoader {
public:
    struct FontToken {
        int i32Number = 0;  // 1..16
        QString strName;
        int i32PixelSize = 0;
        int i32Weight = QFont::Normal;
    };

    // Largest first.
    static const QList<FontToken>& getAllFontTokens();
    // The next smaller token than `name`; empty when `name` is the smallest or unknown.
    static QString getSmallerFontToken(const QString& name);
    static bool hasFontToken(const QString& name);
    static FontToken fontToken(const QString& name);  // i32Number 0 when unknown
    static QString fontTokenName(int i32Number);      // empty when out of range
    // A font for the token (the application font when unknown).
    static QFont font(const QString& name);
    static QFont font(int i32Number);
    // Size of `text` set in the token's font (advance width, bounding height; see
    // lx_std_ui::LWidgetUtil::measureText). An unknown token measures in the application font.
    static QSizeF measureText(const QString& name, const QString& text);
    // Pixel size of the token, -1 when unknown.
    static int pixelSize(const QString& name);
    // The families every token uses, most preferred first.
    static QStringList families();

    // Rewrites "font-token:NAME;" declarations of a style sheet (exposed for tests and callers that
    // build style sheets for other toolkits).
    static QString resolveStyleSheet(const QString& qss);
    // Installs the application filter (idempotent). Done automatically when the application starts.
    static void installStyleSheetFilter();
};
