#pragma once
// CSettingChildTreeConnector: the tree line in front of a child setting (28 x 36). LineBranch
// draws ├ (a child with siblings below it), LineLast └ (the last child: the stem turns right at
// mid-height through a 2-pixel rounded elbow), LineNone nothing. Lines are 1 pixel in the theme's
// separator colour ("ct_line_separator"), repainted on theme change. Mouse events pass through to
// the row under it.

#include <LxUIKit/LxUIKitExport.h>

#include <QWidget>

class LXUIKIT_EXPORT CSettingChildTreeConnector : public QWidget {
    Q_OBJECT
public:
    enum SettingChildTreeLineRole : quint8 { LineNone = 0, LineBranch = 1, LineLast = 2 };
    Q_ENUM(SettingChildTreeLineRole)

    explicit CSettingChildTreeConnector(SettingChildTreeLineRole role, QWidget* parent = nullptr);

    void SetLineRole(SettingChildTreeLineRole role);
    SettingChildTreeLineRole GetLineRole() const { return m_enRole; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    SettingChildTreeLineRole m_enRole = LineNone;
};
