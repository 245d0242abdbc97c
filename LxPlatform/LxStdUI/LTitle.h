#pragma once
// LTitle: a title label. Title styles 1..3 are page, section and group titles (font tokens title1,
// title2, title3, primary text colour, following the theme). setLeftMargin takes a spacing code of
// the standard spacing scale: 0 none, 1 four, 2 eight, 3 twelve, 4 sixteen pixels.

#include <LxStdUI/LxStdUIExport.h>
#include <QLabel>

class LXSTDUI_EXPORT LTitle : public QLabel {
    Q_OBJECT
public:
    explicit LTitle(QWidget* parent = nullptr);

    void setTitleStyle(int i32Style);
    int titleStyle() const { return m_i32Style; }
    void setLeftMargin(int i32SpaceCode);
    // Pixels of a spacing code (codes outside 0..4 read as 0).
    static int spacePixels(int i32SpaceCode);

private:
    int m_i32Style = 1;
};
