#pragma once
// LComboBox: the standard drop-down picker: 32 pixels high, a 1-pixel rounded border in the
// border colour (the accent colour while hovered or open, faded while disabled), the primary text
// colour on the primary background, and a popup list in the same colours with the hover colour
// under the pointer; a chevron in the secondary text colour marks the drop-down. Everything follows
// the theme.

#include <LxStdUI/LxStdUIExport.h>
#include <QComboBox>

class LXSTDUI_EXPORT LComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit LComboBox(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    void ApplyTheme();
};
