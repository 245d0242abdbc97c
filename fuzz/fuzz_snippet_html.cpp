// Snippet markup under hostile text: whatever the text of a token, the document made from the
// snippets holds exactly the anchors the snippets wrote, one paragraph (snippets never open one),
// no frame, list or table, one picture per picture token, and no formatting that only a tag in
// the text could have made; and the document the widget fills from its snippets is the one Qt's
// HTML reader makes of the same markup. Any violation aborts.
//
// Input: records separated by 0x1F. A record's first byte picks the token kind and how its text is
// used, the rest is its UTF-8 text. The input's first byte also picks a line limit (0 to 3), so
// both the kit's layout and Qt's lay the result out.

#include "FuzzApp.h"
#include "TextDocumentRuns.h"

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

#include <QDebug>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <set>

namespace {

using Snippet = std::shared_ptr<CLxRichTextSnippetBase>;

QString g_strHtml;  // the markup under test, shown on failure

// The markup with every character outside printable ASCII as \uXXXX.
QByteArray Printable(const QString& text) {
    QByteArray out;
    for (QChar c : text)
        out += c.unicode() >= 0x20 && c.unicode() < 0x7F
                   ? QByteArray(1, char(c.unicode()))
                   : QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0')).toLatin1();
    return out;
}

void Fail(const char* what, const QString& detail = QString()) {
    std::fprintf(stderr, "fuzz_snippet_html: %s %s\nmarkup: %s\n", what, Printable(detail).constData(),
                 Printable(g_strHtml).constData());
    std::abort();
}

// Picture paths stay inside the resource system: nothing on disk is opened.
QString SafePath(const QString& text) { return QStringLiteral(":/fuzz/") + text; }

Snippet MakeSnippet(uint8_t selector, const QString& text, uint64_t id) {
    switch (selector % 12) {
    case 0: return std::make_shared<CLxRichTextSnippetText>(text);
    case 1: {
        auto s = std::make_shared<CLxRichTextSnippetUser>();
        s->SetUserData(id, text);
        return s;
    }
    case 2: {
        auto s = std::make_shared<CLxRichTextSnippetUser>();
        s->SetUserData(id, QStringLiteral("nick"));
        s->SetUserIDAndDisplayText(id, text);
        return s;
    }
    case 3: {
        auto s = std::make_shared<CLxRichTextSnippetUser>();
        s->SetUserData(id, text);
        s->SetDisplayText(text);
        return s;
    }
    case 4: {
        auto s = std::make_shared<CLxRichTextSnippetStock>();
        s->SetStockData(id, text);
        return s;
    }
    case 5: {
        auto s = std::make_shared<CLxRichTextSnippetStock>();
        s->SetStockIdAndDisplayText(id, text);
        return s;
    }
    case 6: {
        auto s = std::make_shared<CLxRichTextSnippetPortfolio>();
        s->SetPortfolioData(id, text, text.left(3));
        return s;
    }
    case 7: {
        auto s = std::make_shared<CLxRichTextSnippetLink>();
        s->SetLinkData(text, QStringLiteral("https://example.com/"), CLxRichTextDataLink::LinkType_Web);
        return s;
    }
    case 8: {
        auto s = std::make_shared<CLxRichTextSnippetLink>();
        s->SetLinkData(QString(), text, CLxRichTextDataLink::LinkType_Web);
        return s;
    }
    case 9: return std::make_shared<CLxRichTextSnippetEmoticon>(uint32_t(id), SafePath(text));
    case 10: return std::make_shared<CLxRichTextSnippetEmoji>(text, SafePath(text));
    default: return std::make_shared<CLxRichTextSnippetImage>(SafePath(text));
    }
}

bool IsPicture(uint32_t type) {
    return type == LxRichTextDataType_Image || type == LxRichTextDataType_Emoji || type == LxRichTextDataType_Emotion;
}

void Check(CLxRichText& w, const CLxRichText::SnippetList& snippets) {
    QTextDocument* doc = w.document();
    std::set<int> expected, seen;
    int pictures = 0;
    for (size_t i = 0; i < snippets.size(); ++i) {
        const uint32_t type = snippets[i]->GetRichTextType();
        if (type != LxRichTextDataType_Text)
            expected.insert(int(i));
        pictures += IsPicture(type) ? 1 : 0;
    }
    if (doc->blockCount() != 1)
        Fail("paragraphs:", QString::number(doc->blockCount()));
    // Frames show as their marker characters in the raw text (Qt keeps an empty frame object for
    // an image's format, which holds no text and is no structure).
    const QString raw = doc->toRawText();
    if (raw.contains(QChar(0xFDD0)) || raw.contains(QChar(0xFDD1)) || raw.contains(QChar::ParagraphSeparator))
        Fail("a frame or paragraph marker in the text");
    int objects = 0;
    for (QTextBlock b = doc->begin(); b.isValid(); b = b.next()) {
        if (b.textList())
            Fail("a list appeared");
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextFragment f = it.fragment();
            const QTextCharFormat fmt = f.charFormat();
            const QString href = fmt.anchorHref();
            if (fmt.isAnchor() || !href.isEmpty()) {
                bool ok = false;
                const int index = href.toInt(&ok, 10);
                if (!ok || !expected.count(index))
                    Fail("an anchor nobody wrote:", href);
                seen.insert(index);
            }
            if (fmt.isImageFormat() || fmt.objectType() != QTextFormat::NoObject) {
                objects += f.length();
                bool ok = false;
                const int index = href.toInt(&ok, 10);
                if (!ok || index < 0 || size_t(index) >= snippets.size() ||
                    !IsPicture(snippets[size_t(index)]->GetRichTextType()))
                    Fail("a picture outside a picture token:", href);
            }
            if (fmt.fontWeight() > QFont::Normal || fmt.fontItalic() || fmt.fontStrikeOut() ||
                fmt.verticalAlignment() == QTextCharFormat::AlignSuperScript ||
                fmt.verticalAlignment() == QTextCharFormat::AlignSubScript)
                Fail("formatting from the text:", f.text());
        }
    }
    if (seen != expected)
        Fail("anchors missing");
    if (objects != pictures)
        Fail("pictures:", QStringLiteral("%1 of %2").arg(objects).arg(pictures));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    static CLxRichText* s_pWidget = [] {
        auto* w = new CLxRichText;
        w->resize(240, 200);
        return w;
    }();
    if (size == 0)
        return 0;
    CLxRichText::SnippetList snippets;
    const uint8_t* p = data;
    const uint8_t* end = data + size;
    uint64_t id = 0;
    while (p < end && snippets.size() < 64) {
        const uint8_t* sep = p;
        while (sep < end && *sep != 0x1F)
            ++sep;
        if (sep > p) {
            const QString text = QString::fromUtf8(reinterpret_cast<const char*>(p + 1), int(sep - p - 1));
            snippets.push_back(MakeSnippet(*p, text, id));
            id = id * 31 + *p;
        }
        p = sep + 1;
    }
    if (snippets.empty())
        return 0;
    s_pWidget->SetMaxLine(data[0] % 4);
    g_strHtml.clear();
    for (size_t i = 0; i < snippets.size(); ++i) {
        snippets[i]->CreatHtml(unsigned(i), s_pWidget->GetConfig());
        g_strHtml += snippets[i]->GetHtml();
    }
    if (qEnvironmentVariableIsSet("LX_FUZZ_SHOW"))
        std::fprintf(stderr, "markup: %s\n", Printable(g_strHtml).constData());
    s_pWidget->SetRichTextData(snippets);
    Check(*s_pWidget, snippets);
    static CLxRichText* s_pReader = new CLxRichText;
    s_pReader->setText(s_pWidget->text());
    if (lxtest::FormatRuns(s_pWidget->document()) != lxtest::FormatRuns(s_pReader->document()))
        Fail("the filled document differs from the HTML reader's:",
             lxtest::FormatRuns(s_pWidget->document()).join(QLatin1Char('\n')));
    // Lay it out both ways and ask what the widget answers.
    (void)s_pWidget->GetLineCount();
    (void)s_pWidget->heightForWidth(120);
    (void)s_pWidget->textWithEmotionID();
    return 0;
}
