#pragma once
// The style record shared by one rich-text widget and all its snippets. Colour fields are keys of
// the theme's colour tokens (lx_ui_res::Provider); they are resolved when the HTML is built, so a
// theme change means building the HTML again (CLxRichText does so by itself).

#include <LxUIKit/LxUIKitExport.h>
#include <QString>

#include <cstdint>

struct LXUIKIT_EXPORT LxRichTextConfig {
    QString strFontToken = QStringLiteral("BigTitle3");  // font of all text snippets
    int64_t i64Reserved = 0;
    bool bBold = false;       // adds "font-weight:bold;"
    bool bUnderline = false;  // underline instead of no decoration
    bool bReserved1 = false;
    bool bReserved2 = false;
    int32_t i32Reserved = 12;
    int32_t i32EmoticonWidth = 40;  // emoji and emoticon images, pixels
    int32_t i32EmoticonHeight = 40;
    QString strTextColor = QStringLiteral("ct_text_h1");  // plain text
    uint64_t u64TextColorReserved = 0;
    QString strUserColor = QStringLiteral("ct_text_link");  // user mentions
    uint64_t u64UserColorReserved = 0;
    QString strStockColor = QStringLiteral("ct_text_link");  // stocks and portfolios
    uint64_t u64StockColorReserved = 0;
    QString strLinkColor = QStringLiteral("ct_text_link");  // links
    uint64_t u64LinkColorReserved = 0;
};
