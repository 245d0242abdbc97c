#pragma once
// LSlideshowBase: a carousel frame. It holds content widgets (pages) in order, shows one at a time
// over its whole area, pages automatically every autoPlayInterval() milliseconds (paused while the
// pointer is over it; 0 switches auto-play off), and paints one indicator dot per visible page at
// the bottom (the current one in the accent colour); a click on a dot shows that page. A
// horizontal drag of more than 30 pixels pages to the next or previous page, so content widgets
// that do not accept mouse presses let the frame page.
//
// A page can be hidden (insertWidget(..., false), setContentWidgetVisible): hidden pages keep their
// index but are skipped by paging, by auto-play and by the indicators (a picture still loading).
// With a width/height ratio other than Ratio_Free the frame asks its layout for a height that
// keeps the ratio (heightForWidth).

#include <LxStdUI/LxStdUIExport.h>

#include <QPointer>
#include <QWidget>

#include <vector>

class QTimer;

class LXSTDUI_EXPORT LSlideshowBase : public QWidget {
    Q_OBJECT
public:
    enum WidthHeightRatio {
        Ratio_Free = 0,
        Ratio_16_9 = 1,
        Ratio_4_3 = 2,
        Ratio_2_1 = 3,
        Ratio_3_1 = 4,
        Ratio_1_1 = 5
    };
    Q_ENUM(WidthHeightRatio)

    explicit LSlideshowBase(QWidget* parent = nullptr, WidthHeightRatio ratio = Ratio_Free);

    // Appends a page; answers its index, or -1 for a null widget.
    int addWidget(QWidget* widget, bool bVisible = true);
    // index -1 appends; 0..count() inserts before that page; answers the index or -1 (refused:
    // null widget, widget already a page, index out of range). The widget becomes a child.
    int insertWidget(int index, QWidget* widget, bool bVisible = true);
    // Removes the page (the widget is neither hidden nor deleted: the caller owns it again).
    bool removeWidget(QWidget* widget);
    int indexOfWidget(QWidget* widget) const;
    QWidget* widget(int index) const;
    int count() const { return int(m_vecPages.size()); }
    void setContentWidgetVisible(int index, bool bVisible);
    bool isContentWidgetVisible(int index) const;
    int visibleCount() const;

    int currentIndex() const { return m_i32Current; }  // -1 when no visible page
    void setCurrentIndex(int index);                   // ignored for hidden or bad indices
    void next();
    void previous();

    void setAutoPlayInterval(int i32Ms);
    int autoPlayInterval() const { return m_i32Interval; }
    WidthHeightRatio ratio() const { return m_enRatio; }

    bool hasHeightForWidth() const override { return m_enRatio != Ratio_Free; }
    int heightForWidth(int w) const override;
    QSize sizeHint() const override;
    // Where the indicator dot of a page is painted (empty for hidden pages).
    QRect indicatorRect(int index) const;

Q_SIGNALS:
    void currentChanged(int index);

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void enterEvent(QEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    struct Page {
        QPointer<QWidget> pWidget;
        bool bVisible = true;
    };
    void Step(int i32Dir);
    void ShowCurrent();
    void Prune();

    std::vector<Page> m_vecPages;
    int m_i32Current = -1;
    int m_i32Interval = 4000;
    WidthHeightRatio m_enRatio = Ratio_Free;
    QTimer* m_pTimer = nullptr;
    QWidget* m_pDots = nullptr;
    QPoint m_ptPress;
    bool m_bPressed = false;
};
