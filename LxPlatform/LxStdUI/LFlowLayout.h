#pragma once
// A layout that places its items left to right and wraps to a new line when the width runs out,
// like words in a paragraph. Its height follows its width (heightForWidth), so a tool bar built on
// it grows a line when its window is narrowed.
//
// A spacing of -1 (the default) takes the style's spacing for the parent, as QBoxLayout does.

#include <LxStdUI/LxStdUIExport.h>

#include <QLayout>
#include <QList>
#include <QStyle>

class LXSTDUI_EXPORT LFlowLayout : public QLayout {
    Q_OBJECT
public:
    explicit LFlowLayout(QWidget* parent = nullptr, int margin = -1, int hSpacing = -1, int vSpacing = -1);
    ~LFlowLayout() override;

    int horizontalSpacing() const;
    int verticalSpacing() const;

    void addItem(QLayoutItem* item) override;
    int count() const override { return m_items.size(); }
    QLayoutItem* itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return DoLayout(QRect(0, 0, width, 0), true); }
    QSize minimumSize() const override;
    QSize sizeHint() const override { return minimumSize(); }
    void setGeometry(const QRect& rect) override;

private:
    int DoLayout(const QRect& rect, bool testOnly) const;
    int SmartSpacing(QStyle::PixelMetric pm) const;

    QList<QLayoutItem*> m_items;
    int m_i32HSpace;
    int m_i32VSpace;
};
