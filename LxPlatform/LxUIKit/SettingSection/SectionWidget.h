#pragma once
// Settings-page rows. Each row is a CSectionBaseWidget: one horizontal layout (spacing 0, the
// margins given, aligned to the top), a fixed height policy, and standard controls composed in it:
//   CSectionTitleWidget      a group title (title style 3), optionally a link at the right
//   CSectionCheckWidget      one radio button or check box (8 pixels between mark and text)
//   CSectionMultiTextWidget  description (wrapping), data text (elided, at most 160 px) and a link
//                            (at most 128 px); call the setters wanted, then Completed() once
//   CSectionLineEditWidget / CSectionComboBoxWidget
//                            a label, 16 pixels, then the input; settings pages give all labels of
//                            a column one width with GetDescTextWidth() and RefreshLayout()
//   CSectionSwitchWidget     a label with a switch at the right, fixed height
// The rows follow the theme through their controls. A row whose layout could not be made raises
// the soft assertion on every layout call and stays empty; it never crashes.

#include <LxStdUI/LComboBox.h>
#include <LxStdUI/LLineEdit.h>
#include <LxStdUI/LSwitch.h>
#include <LxStdUI/LText.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QHBoxLayout>
#include <QMargins>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

class LXUIKIT_EXPORT CSectionBaseWidget : public QWidget {
    Q_OBJECT
public:
    explicit CSectionBaseWidget(QMargins margins, QWidget* parent = nullptr);

    // Empty when the layout is missing (callers assert and skip their layout work).
    std::optional<QHBoxLayout*> GetMainHBoxLayout() const;

protected:
    QHBoxLayout* m_pMainLayout = nullptr;
};

class LXUIKIT_EXPORT CSectionTitleWidget : public CSectionBaseWidget {
    Q_OBJECT
public:
    CSectionTitleWidget(const QString& title, QMargins margins, QWidget* parent = nullptr);
    explicit CSectionTitleWidget(const QString& title, QWidget* parent = nullptr);

    void SetRightCtrlLinkButton(const QString& text, std::function<void()>&& onClick);
};

class LXUIKIT_EXPORT CSectionCheckWidget : public CSectionBaseWidget {
    Q_OBJECT
public:
    enum ButtonType { RadioButton = 0, CheckBox = 1 };
    Q_ENUM(ButtonType)

    CSectionCheckWidget(ButtonType type, const QString& text, QMargins margins, QWidget* parent = nullptr);
    // The LRadio or LCheck (null for an unknown type).
    QWidget* GetButton() const { return m_pButton; }

private:
    QWidget* m_pButton = nullptr;
};

// A word-wrapping text whose size hint is the height its text needs at its current width (128
// pixels while it has none yet).
class LXUIKIT_EXPORT CSectionDescText : public LText {
    Q_OBJECT
public:
    using LText::LText;
    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* e) override;
};

class LXUIKIT_EXPORT CSectionMultiTextWidget : public CSectionBaseWidget {
    Q_OBJECT
public:
    enum SegmentType { DescSegment = 0, DataSegment = 1, CtrlSegment = 2 };
    Q_ENUM(SegmentType)

    using CSectionBaseWidget::CSectionBaseWidget;

    CSectionMultiTextWidget* SetDescText(const QString& text);
    CSectionMultiTextWidget* SetDataText(const QString& text);
    CSectionMultiTextWidget* SetCtrlLink(const QString& text, std::function<void()>&& onClick);
    void Completed();
    QWidget* GetSegment(SegmentType type) const;

protected:
    void resizeEvent(QResizeEvent* e) override;

private:
    QWidget* m_apSegments[3] = {nullptr, nullptr, nullptr};
};

class LXUIKIT_EXPORT CSectionInputWidget : public CSectionBaseWidget {
    Q_OBJECT
public:
    using CSectionBaseWidget::CSectionBaseWidget;

    // The smaller of the first label's text width and its maximum width; 0 without a label.
    int GetDescTextWidth() const;
    // Fixes every LText inside the row (nested ones too) to `width`, then lays out and repaints.
    void RefreshLayout(int width);
    bool CanBeRefreshed() const { return m_bHasDesc; }

protected:
    void CreateImpl(QWidget* desc, QWidget* ctrl);

private:
    bool m_bHasDesc = false;
};

class LXUIKIT_EXPORT CSectionLineEditWidget : public CSectionInputWidget {
    Q_OBJECT
public:
    using CSectionInputWidget::CSectionInputWidget;
    void Create(LText* desc, LLineEdit* edit) { CreateImpl(desc, edit); }
};

class LXUIKIT_EXPORT CSectionComboBoxWidget : public CSectionInputWidget {
    Q_OBJECT
public:
    using CSectionInputWidget::CSectionInputWidget;
    void Create(LText* desc, LComboBox* combo) { CreateImpl(desc, combo); }
};

// Distinct class names for the voice and reminder pickers (style sheets, the inspector).
class LXUIKIT_EXPORT CSectionVoiceComboBox : public LComboBox {
    Q_OBJECT
public:
    using LComboBox::LComboBox;
};

class LXUIKIT_EXPORT CSectionReminderComboBox : public LComboBox {
    Q_OBJECT
public:
    using LComboBox::LComboBox;
};

class LXUIKIT_EXPORT CSectionSwitchWidget : public CSectionBaseWidget {
    Q_OBJECT
public:
    struct SectionSwitchWidgetConfig {
        QString text;
        bool checked = false;
        QMargins margins;
        std::function<void(bool)> onToggled;
        int height = 40;
    };

    explicit CSectionSwitchWidget(const SectionSwitchWidgetConfig& config, QWidget* parent = nullptr);

    void SetChecked(bool bChecked);
    bool IsChecked() const;
    LSwitch* GetSwitch() const { return m_pSwitch; }

private:
    QPointer<LSwitch> m_pSwitch;
};
