#pragma once
// LLineEdit: the standard single-line input: 32 pixels high, a 1-pixel rounded border in the
// border colour, the accent colour while focused, the red text colour in the error state
// (setErrorState, for example after a failed validation), faded while disabled; placeholder text
// in the hint colour. Everything follows the theme.

#include <LxStdUI/LxStdUIExport.h>
#include <QLineEdit>

class LXSTDUI_EXPORT LLineEdit : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(bool errorState READ isErrorState WRITE setErrorState NOTIFY errorStateChanged)
public:
    explicit LLineEdit(QWidget* parent = nullptr);

    void setErrorState(bool bError);
    bool isErrorState() const { return m_bError; }
    // Border colour key of the current state (for tests and custom painting around the edit).
    QString borderColorKey() const;

Q_SIGNALS:
    void errorStateChanged(bool bError);

protected:
    void focusInEvent(QFocusEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;

private:
    void ApplyTheme();
    bool m_bError = false;
};
