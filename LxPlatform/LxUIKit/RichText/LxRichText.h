#pragma once
// CLxRichText: a read-only label for rich text. It shows a list of snippets (plain text, user
// mentions, stocks, portfolios, links, pictures, emoji, emoticons) as one document, wraps and cuts
// it to a line or height limit with an ellipsis (CLxRichTextLayout), reports clicks and hovers on
// the interactive snippets, and lets the user select and copy text with mouse and keyboard.
//
// Built like Qt's own label: a text control (QWidgetTextControl) owns the document and receives
// the mouse, key and focus events. Each interactive snippet is an anchor whose href is its index in
// the list, so a position in the document maps back to its snippet.
//
// Cheap to make and to fill, since a feed makes many rows it never paints: the widget holds no
// document until content is set; the text control comes with the first press, key, focus or
// selection call, and the measuring document with the first measure at another width. Content
// made of the kit's snippets goes into the document through a text cursor with formats prepared
// once per style, not through the HTML reader (the document is the same either way).
//
//   auto* label = new CLxRichText(parent);
//   label->SetMaxLine(3);
//   label->SetRichTextData({text, stock, user});
//   connect(label, &CLxRichText::Clicked, [](std::shared_ptr<CLxRichTextSnippetBase> s, QPoint) { ... });
//
// Theme: colour keys are resolved when the HTML is built; a theme change rebuilds it by itself
// (right away when shown, else when next shown or painted). HTML given through setText is kept as
// it is on a theme change (its colours are its own; unstyled text takes the configuration's text
// colour, resolved at paint time).
//
// Arbitrary HTML (setText): without a line or height limit it is laid out by Qt's own document
// layout, so lists, tables, floats and frames look as in any Qt text widget. With a limit the
// kit's layout cuts it per paragraph: list items keep their markers and indents, table cells stack
// as paragraphs (see CLxRichTextLayout).
//
// Sizes: heightForWidth and the size hints follow the label's rules and are cached until the
// content, the limits, the font or the style change, so repeated questions at one width cost
// nothing. Measuring at a width other than the one shown uses a second document
// (m_pDocForCalculateSize), filled only when first needed; before the widget is shown the document
// itself is measured, so a row that is measured and then shown at that width is laid out once.
//
// Choices made where the behaviour was left open:
//  - WrapMode and TextAlignment number their enumerators 0..3 as declared; the default wrap is
//    WrapAtWordBoundaryOrAnywhere (long tokens and URLs break instead of overflowing).
//  - The document margin is 0: the widget's contents margins and frame are the only spacing.
//  - The size hint is at most about 80 "x" wide, as Qt's label; the minimum size hint is about four
//    "x" wide and one line high (the height comes from heightForWidth).
//  - The line limit wins over the text height limit (SetTextMaxHeight), which applies only
//    without one; both cut every paragraph separately.
//  - A style change sets the layout-item margins the style gives labels (SE_LabelLayoutItem),
//    after the frame has set its own.
//  - A token with blank text still shows something and so keeps its anchor; the fallbacks are
//    listed in LxRichTextSnippetBase.h. Snippet text never opens a paragraph, frame or object.

#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextConfig.h>
#include <LxUIKit/RichText/LxRichTextLayout.h>
#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

#include <QFrame>
#include <QMetaType>
#include <QTextLine>

#include <memory>
#include <vector>

class CLxRichTextControl;
class CLxRichTextPrivate;
class QTextDocument;
class QTextLayout;

Q_DECLARE_METATYPE(std::shared_ptr<CLxRichTextSnippetBase>)

class LXUIKIT_EXPORT CLxRichText : public QFrame {
    Q_OBJECT
    // For property readers (inspectors, automation); nothing binds to them, so no change signal.
    Q_PROPERTY(QString text READ text WRITE setText)              // clazy:exclude=qproperty-without-notify
    Q_PROPERTY(QString textWithEmotionID READ textWithEmotionID)  // clazy:exclude=qproperty-without-notify
public:
    // The emoticon object type of the document (emoticon images are drawn by their handler).
    static constexpr int kEmotionObjectType = 0x1000 + 4;  // QTextFormat::UserObject + 4

    enum WrapMode { NoWrap = 0, WordWrap = 1, WrapAnywhere = 2, WrapAtWordBoundaryOrAnywhere = 3 };
    Q_ENUM(WrapMode)
    enum TextAlignment { AlignLeft = 0, AlignCenter = 1, AlignRight = 2, AlignJustify = 3 };
    Q_ENUM(TextAlignment)

    using SnippetList = std::vector<std::shared_ptr<CLxRichTextSnippetBase>>;

    explicit CLxRichText(QWidget* pParent = nullptr);
    ~CLxRichText() override;

    // Content. The widget keeps the list (shared with the caller); empty pointers are skipped but
    // keep their index. Asserts "m_pDocForCalculateSize" when the measuring document is missing.
    void SetRichTextData(const SnippetList& vecSnippets);
    const SnippetList& GetRichTextData() const;
    std::shared_ptr<LxRichTextConfig> GetConfig() const;
    void SetConfig(std::shared_ptr<LxRichTextConfig> spConfig);
    // The HTML of all snippets in order; empty without snippets or configuration.
    QString GetFormatHtml();
    // Builds the HTML again and shows it (colour keys resolved for the current theme).
    void ResetHtml();
    // The shown HTML. setText shows any HTML as it is (the snippets stay, for href indices).
    QString text() const;
    void setText(const QString& strHtml);
    // The content as text for sending: emoticons as "#emotion_<id>#", other snippets as their
    // plain text.
    QString textWithEmotionID() const;
    void Clear();
    void clearContents();

    // Limits (passed to the layout; assert "m_pLayout" without one).
    void SetMaxLine(int i32MaxLine);
    int GetMaxLine() const;
    void SetEllipsisShown(bool bShown);
    // Height limit of the text itself, used only without a line limit; 0 for none.
    void SetTextMaxHeight(unsigned int u32MaxHeight);
    // With a line limit: the widget's maximum height becomes the bottom of line maxLine - 1.
    void ReSetMaxHeight();

    void SetWrapMode(WrapMode enMode);
    WrapMode GetWrapMode() const;
    void SetAlignment(TextAlignment enAlignment);
    TextAlignment GetAlignment() const;
    void SetSelectionColorKey(const QString& strKey);

    // Measuring. Documents default to the shown one.
    int GetLineCount();
    int GetLineCountForWidth(int i32Width, bool bLimited = true);
    QTextLine GetTextLine(int i32Index, QTextDocument* pDoc = nullptr);
    QTextLayout* GetTextBlockLayout(QTextDocument* pDoc = nullptr);
    // Index of the last line whose bottom lies inside the widget; -1 when none does.
    int FindLastVisibleLine();
    QSize GetContentSize();      // the shown document's size
    QSize GetContentRealSize();  // the width the lines really use, and the height
    QSize ContentRealSizeForWidth(int i32Width);
    // Widget size for a widget width: the content laid out at that width plus the contents
    // margins; bLimited false measures the whole text, ignoring the limits.
    QSize SizeForWidth(int i32Width, bool bLimited = true);
    int CalculateDocumentContentWidth(int i32WidgetWidth) const;
    // Widget width that shows every paragraph on one line.
    int GetDesiredWidth();

    bool hasHeightForWidth() const override;
    int heightForWidth(int w) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Selection.
    void SetSelectEnable(bool bEnable);
    bool IsSelectEnable() const;
    void SetSelection(int i32Start, int i32Length);
    void SelectAll();
    void ClearSelection();
    bool hasSelectedText() const;
    int selectionStart() const;
    int selectionEnd() const;
    bool IsAllSelected() const;
    QString GetSelectedText() const;
    SnippetList GetSelDataItems() const;

    QTextDocument* document() const;
    CLxRichTextLayout* GetLayout() const;

Q_SIGNALS:
    void Clicked(std::shared_ptr<CLxRichTextSnippetBase> snippet, QPoint globalPos);
    void Hovered(std::shared_ptr<CLxRichTextSnippetBase> snippet, QPoint globalPos);

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;
    bool focusNextPrevChild(bool bNext) override;
    void changeEvent(QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;

private Q_SLOTS:
    void OnThemeChanged(lx_ui_theme::Manager::Theme theme);

private:
    void init();
    QTextDocument* EnsureDocument();
    CLxRichTextControl* EnsureTextControl();
    bool InitDocumentForCalculateSize();
    void SetupDocument(QTextDocument* pDoc, CLxRichTextLayout* pLayout);
    void ApplyContent(const QString& strHtml, bool bFromSnippets, bool bPiecesValid);
    void SetContentFromSnippets();
    bool BuildSnippetHtml();  // false when there is nothing to build (no snippets or no configuration)
    QString JoinSnippetHtml() const;
    void SetHtmlInto(QTextDocument* pDoc, const QString& strHtml, bool bFromSnippets);
    void SetEmotionObjectType(QTextDocument* pDoc);
    void AdjustWrapMode();
    void ApplyLimits(CLxRichTextLayout* pLayout);
    // Applies the stored limits to the documents that exist (documents made later take them when
    // they are made) and announces the change.
    void ReapplyLimits();
    void ContentChanged();
    void InvalidateSizes();
    void FlushThemeChange();
    void EnsureTextLayouted();
    bool EnsureMeasureDocument();
    // The document to measure at a document width (-1: unbounded), laid out at that width.
    QTextDocument* DocumentForWidth(qreal docWidth);
    QSize DocumentSizeForWidth(int i32Width, bool bLimited);
    QPointF DocumentOffset() const;
    QString GetHref(QMouseEvent* e);
    std::shared_ptr<CLxRichTextSnippetBase> SnippetForHref(const QString& strHref) const;
    void OnHovered(const QString& strHref);
    void OnClicked(const QString& strHref, QMouseEvent* e);
    void SendToControl(QEvent* e, bool bCreate = true);
    // Document ranges [start, end) of every snippet, in list order.
    std::vector<std::pair<int, int>> SnippetRanges() const;

    std::unique_ptr<CLxRichTextPrivate> m_pPrivate;
};
