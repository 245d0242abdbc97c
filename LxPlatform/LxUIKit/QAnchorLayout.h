#pragma once
// QAnchorLayout: places each child widget by a short text of anchor flags kept in the child's
// dynamic property "AnchorLayout" (for example "Right:8, VCenter" or "RightOfSibling:-1,
// TopAlignSibling:-1"). Children are placed in the order they were added; that order is also what
// sibling indices count. QAnchorLayoutFlagBuilder writes such texts from typed calls.
//
// A flag text is a comma-separated list of tokens, applied in order to one rectangle. The
// rectangle starts at the layout rectangle's top-left corner (contents margins removed) with the
// child's own size (its sizeHint(), a missing width or height taken from its current geometry).
// P is the layout rectangle, S a sibling's current geometry:
//   Left[:d] Right[:d] Top[:d] Bottom[:d]   put that edge on P's edge, d pixels (or d x P's side)
//                                            inside it
//   Center HCenter VCenter                  centre on P (both axes, horizontally, vertically)
//   Size:w h                                take this size (pixels, or fractions of P)
//   Margin:l t r b                          on an axis already placed against an edge or centre:
//                                            step in from that edge by its margin (centred: by
//                                            half the difference); on an axis not yet placed:
//                                            fill P's side less both margins
//   LeftOfSibling RightOfSibling TopOfSibling BottomOfSibling
//                                            sit just outside S on that side (one axis)
//   LeftTopSibling RightTopSibling LeftBottomSibling RightBottomSibling
//                                            sit diagonally outside S's corner (both axes)
//   LeftAlignSibling RightAlignSibling TopAlignSibling BottomAlignSibling
//                                            put this edge on S's same edge
//   CenterAlignSibling HCenterAlignSibling VCenterAlignSibling
//                                            centre on S (both, horizontally, vertically)
//   SameSizeAs SameWidthAs SameHeightAs      take S's size, width or height
// A size change (Size, SameXxxAs) keeps whichever edge or centre the last placing token of that
// axis fixed, so "Right, Size:100 20" stays on the right edge. Sibling tokens name the sibling
// after the last ':': a negative integer counts back from this child (-1: the one added just
// before), a positive integer is a 1-based position, anything else an object name (the first
// child with that name; none means the token does nothing). Siblings placed earlier in the pass
// are seen at their new geometry, later ones at their geometry from the previous pass.
// Numbers v with 0 < v <= 1 are fractions of P's side, all others pixels (1.5 is one pixel).
//
// Tokens are classified by prefix in a fixed order (sibling forms first, since "Left" is a prefix
// of them); a token that matches no form, or whose numbers do not read, is logged once when its
// flag text is first seen and then ignored. Flag texts are parsed once per change, not per pass;
// changing the property invalidates the layout, so the child moves at the next geometry pass. A
// sibling index outside the children is a programming error: it raises the soft assertion and the
// token does nothing.
//
// sizeHint() is the extent the children need when laid out in a rectangle as large as the largest
// child hint (pixel offsets and margins included); minimumSize() the largest child minimum; both
// include the contents margins.

#include <LxUIKit/LxUIKitExport.h>

#include <QLayout>
#include <QStringList>

#include <memory>

class QAnchorLayoutPrivate;

class LXUIKIT_EXPORT QAnchorLayout : public QLayout {
    Q_OBJECT
public:
    static constexpr const char* kFlagsProperty = "AnchorLayout";

    explicit QAnchorLayout(QWidget* parent = nullptr);
    ~QAnchorLayout() override;

    // Sets the widget's "AnchorLayout" property to `flags`, then adds it.
    void addWidget(QWidget* widget, const QString& flags);
    using QLayout::addWidget;

    void addItem(QLayoutItem* item) override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    int count() const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    Qt::Orientations expandingDirections() const override { return Qt::Horizontal | Qt::Vertical; }
    void invalidate() override;
    void setGeometry(const QRect& rect) override;

    // The widget's own size as placement uses it.
    static QSize getTargetSize(QWidget* widget);
    // 0 < value <= 1: that fraction of total (truncated); otherwise value pixels.
    static int valueOrPercentageToInt(double value, int total);
    // The offset of an edge token ("Left:10", "Top:0.25"); 0 without exactly one ':'.
    static int CalcRelativeOffset(QString& token, int total);
    // The sibling a token's parts name (see above); null when none.
    QWidget* GetSiblingByIndecator(QStringList& parts, int selfIndex);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::unique_ptr<QAnchorLayoutPrivate> m_pD;
};

// Writes anchor flag texts. Each call appends its token and then the separator ", "; getFlags()
// joins everything, so Left + Top + Margin(4,4,4,4) reads "Left, Top, Margin:4 4 4 4, , " (Margin
// carries a separator of its own). The right alignment to a sibling is written without its colon
// ("RightAlignSibling" + name): callers relying on that output get it unchanged, and the layout
// finds no sibling for it.
class LXUIKIT_EXPORT QAnchorLayoutFlagBuilder {
public:
    enum Alignment { Left = 1, Right = 2, Top = 4, Bottom = 8, Center = 16, HCenter = 32, VCenter = 64 };
    enum SiblingPosition {
        LeftOf = 0,
        TopOf = 1,
        RightOf = 2,
        BottomOf = 3,
        LeftTop = 4,
        RightTop = 5,
        LeftBottom = 6,
    };

    QAnchorLayoutFlagBuilder& AlignToParent(Alignment alignment);
    QAnchorLayoutFlagBuilder& AlignToSibling(const QString& name, Alignment alignment);
    QAnchorLayoutFlagBuilder& SameSizeAsSibling(const QString& name);
    QAnchorLayoutFlagBuilder& SameWidthAsSibling(const QString& name);
    QAnchorLayoutFlagBuilder& SameHeightAsSibling(const QString& name);
    QAnchorLayoutFlagBuilder& SizeToParent(double width, double height);
    QAnchorLayoutFlagBuilder& Margin(double left, double top, double right, double bottom);
    QAnchorLayoutFlagBuilder& RelativeToSibling(const QString& name, SiblingPosition position);

    QString getFlags() const { return m_tokens.join(QString()); }

private:
    QAnchorLayoutFlagBuilder& Append(const QString& token);
    QStringList m_tokens;
};
