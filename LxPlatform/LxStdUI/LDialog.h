#pragma once
// LDialog: the standard dialog. Style 1 is a plain frame for custom content; style 2 is the tip
// dialog (title, content text, one confirm button). Colours follow the theme; texts can be changed
// while shown. showCenter() shows it centred over a parent window (or the primary screen) without
// blocking; a parentless dialog deletes itself when closed.

#include <LxStdUI/LxStdUIExport.h>
#include <QDialog>
#include <QPointer>

class QLabel;
class QPushButton;
class QVBoxLayout;

class LXSTDUI_EXPORT LDialog : public QDialog {
    Q_OBJECT
public:
    explicit LDialog(QWidget* parent = nullptr);

    void setLxStyle(int i32Style);
    int lxStyle() const { return m_i32Style; }
    void setTitle(const QString& title);
    QString title() const;
    void setContent(const QString& content);
    QString content() const;
    void setConfirmText(const QString& text);
    QString confirmText() const;
    // Widget placed between the content text and the button row (style 1 hosts use this).
    void setContentWidget(QWidget* widget);

    // i32Width > 0 fixes the width; otherwise the natural size is used.
    void showCenter(QWidget* parent, int i32Width);

Q_SIGNALS:
    void confirmed();

protected:
    void changeEvent(QEvent* e) override;

private:
    void ApplyTheme();

    int m_i32Style = 1;
    QPointer<QLabel> m_pTitle;
    QPointer<QLabel> m_pContent;
    QPointer<QPushButton> m_pConfirm;
    QPointer<QVBoxLayout> m_pLayout;
    QPointer<QWidget> m_pContentWidget;
};
