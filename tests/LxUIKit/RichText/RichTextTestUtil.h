#pragma once
// Shared by the rich-text tests: snippet builders and generated pictures.

#include "LxTestSupport.h"

#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/RichText/LxRichText.h>
#include <LxUIKit/RichText/LxRichTextLayout.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoji.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoticon.h>
#include <LxUIKit/RichText/LxRichTextSnippetImage.h>
#include <LxUIKit/RichText/LxRichTextSnippetLink.h>
#include <LxUIKit/RichText/LxRichTextSnippetPortfolio.h>
#include <LxUIKit/RichText/LxRichTextSnippetStock.h>
#include <LxUIKit/RichText/LxRichTextSnippetText.h>
#include <LxUIKit/RichText/LxRichTextSnippetUser.h>

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextLayout>
#include <QtTest>

namespace rt_test {

using Snippet = std::shared_ptr<CLxRichTextSnippetBase>;
const QChar kZw(0x200B);

inline auto Text(const QString& s) { return std::make_shared<CLxRichTextSnippetText>(s); }
// A display text, when given, is set after the nickname; the display text is read once, as any
// reader does (an empty one is derived and stored then).
inline auto User(const QString& nick, uint64_t id = 42, const QString& display = QString()) {
    auto s = std::make_shared<CLxRichTextSnippetUser>();
    s->SetUserData(id, nick);
    if (!display.isNull())
        s->SetUserIDAndDisplayText(id, display);
    s->GetDisplayText();
    return s;
}
inline auto Stock(const QString& name, uint64_t id = 700, const QString& display = QString()) {
    auto s = std::make_shared<CLxRichTextSnippetStock>();
    s->SetStockData(id, name);
    if (!display.isNull())
        s->SetStockIdAndDisplayText(id, display);
    return s;
}
inline auto Portfolio(const QString& name, const QString& code, uint64_t id = 1) {
    auto s = std::make_shared<CLxRichTextSnippetPortfolio>();
    s->SetPortfolioData(id, name, code);
    return s;
}
inline auto Link(const QString& title, const QString& url,
                 CLxRichTextDataLink::LinkType type = CLxRichTextDataLink::LinkType_Web) {
    auto s = std::make_shared<CLxRichTextSnippetLink>();
    s->SetLinkData(title, url, type);
    return s;
}

// The fixed font the layout tests measure with.
inline QFont TestFont() {
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(14);
    return f;
}

// A 10 x 10 SVG square of one colour.
inline QByteArray SvgRect(const char* color) {
    const char* svg = "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'><rect width='10' height='10'";
    return QByteArray(svg) + " fill='" + color + "'/></svg>";
}

// A picture of one colour saved as `name` in `dir`; answers its path.
inline QString MakeImage(const QTemporaryDir& dir, const QString& name, const QSize& size, QColor color = Qt::red) {
    QImage img(size, QImage::Format_ARGB32);
    img.fill(color);
    img.save(dir.filePath(name));
    return dir.filePath(name);
}

// Pixels of `img` inside `area` for which `pred` holds.
template <class Pred>
int CountPixels(const QImage& img, const QRect& area, Pred pred) {
    int n = 0;
    const QRect r = area.intersected(img.rect());
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            n += pred(img.pixelColor(x, y)) ? 1 : 0;
    return n;
}

inline int RedPixels(const QImage& img, const QRect& area) {
    return CountPixels(img, area, [](QColor c) { return c.red() > 150 && c.green() < 140 && c.blue() < 140; });
}

}  // namespace rt_test
