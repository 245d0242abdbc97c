// Layouts: an anchor layout with five children placed by flag texts, a live editor for the flags
// of the selected child, and the flag builder with the text it writes. Resize the window to see
// fractions and edges follow.

#include "GalleryPages.h"

#include <LxStdUI/LComboBox.h>
#include <LxStdUI/LLineEdit.h>
#include <LxStdUI/LText.h>
#include <LxStdUI/LTitle.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/QAnchorLayout.h>

#include <QCoreApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <memory>

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LayoutPage)
};

// A coloured block that names itself, so placements are easy to read.
class Block : public QLabel {
public:
    Block(const QString& name, const QString& text, const char* colorKey, QSize hint, QWidget* parent)
        : QLabel(text, parent), m_hint(hint), m_colorKey(QString::fromLatin1(colorKey)) {
        setObjectName(name);
        setAlignment(Qt::AlignCenter);
        ApplyTheme();
        QObject::connect(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         [this] { ApplyTheme(); });
    }
    QSize sizeHint() const override { return m_hint; }

private:
    void ApplyTheme() {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        setStyleSheet(QStringLiteral("QLabel { background:%1; color:%2; border-radius:4px; }")
                          .arg(res->colorString(m_colorKey), res->colorString(QStringLiteral("ct_text_white"))));
    }
    QSize m_hint;
    QString m_colorKey;
};

}  // namespace

QWidget* CreateLayoutPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* root = new QVBoxLayout(page);
    auto* title = new LTitle(page);
    title->setTitleStyle(1);
    title->setText(Texts::tr("Anchor layout"));
    root->addWidget(title);
    auto* hint = new LText(Texts::tr("Each block is placed by the text in its \"AnchorLayout\" property. Pick a block, "
                                     "edit its flags, or build flags below and apply them."),
                           page);
    hint->setTextStyle(6);
    hint->setWordWrap(true);
    root->addWidget(hint);

    auto* body = new QHBoxLayout;
    root->addLayout(body, 1);

    auto* canvas = new QFrame(page);
    canvas->setObjectName(QStringLiteral("AnchorCanvas"));
    canvas->setFrameShape(QFrame::StyledPanel);
    canvas->setMinimumSize(360, 260);
    auto* anchor = new QAnchorLayout(canvas);
    anchor->setContentsMargins(8, 8, 8, 8);
    const struct {
        const char* name;
        const char* title;
        const char* color;
        QSize hint;
        const char* flags;
    } blocks[] = {
        {"banner", QT_TRANSLATE_NOOP("LayoutPage", "Banner"), "ct_button_primary", QSize(120, 40),
         "Left, Top, Size:1 48"},
        {"badge", QT_TRANSLATE_NOOP("LayoutPage", "Badge"), "ct_text_red", QSize(56, 24),
         "Right:8, TopAlignSibling:banner, VCenterAlignSibling:banner"},
        {"card", QT_TRANSLATE_NOOP("LayoutPage", "Card"), "ct_text_green", QSize(160, 90), "Center, Size:0.5 0.4"},
        {"note", QT_TRANSLATE_NOOP("LayoutPage", "Note"), "ct_text_highlight", QSize(90, 32),
         "RightOfSibling:-1, TopAlignSibling:card, Margin:8 0 0 0"},
        {"footer", QT_TRANSLATE_NOOP("LayoutPage", "Footer"), "ct_text_h2", QSize(120, 28),
         "Bottom, HCenter, SameWidthAs:card"},
    };
    QList<QWidget*> children;
    for (const auto& b : blocks) {
        auto* w = new Block(QString::fromLatin1(b.name), QCoreApplication::translate("LayoutPage", b.title), b.color,
                            b.hint, canvas);
        anchor->addWidget(w, QString::fromLatin1(b.flags));
        children.append(w);
    }
    body->addWidget(canvas, 3);

    auto* side = new QVBoxLayout;
    body->addLayout(side, 2);
    auto* pick = new LComboBox(page);
    pick->setObjectName(QStringLiteral("AnchorChildPicker"));
    for (QWidget* w : children)
        pick->addItem(static_cast<QLabel*>(w)->text());
    auto* flags = new LLineEdit(page);
    flags->setObjectName(QStringLiteral("AnchorFlagEditor"));
    side->addWidget(new LText(Texts::tr("Flags of the selected block"), page));
    side->addWidget(pick);
    side->addWidget(flags);
    auto showFlags = [=](int i) {
        if (i >= 0 && i < children.size())
            flags->setText(children[i]->property(QAnchorLayout::kFlagsProperty).toString());
    };
    QObject::connect(pick, QOverload<int>::of(&QComboBox::currentIndexChanged), page, showFlags);
    QObject::connect(flags, &QLineEdit::textEdited, page, [=](const QString& text) {
        const int i = pick->currentIndex();
        if (i >= 0 && i < children.size())
            children[i]->setProperty(QAnchorLayout::kFlagsProperty, text);  // moves at the next pass
    });
    showFlags(0);

    // The builder: typed calls and the text they write.
    side->addSpacing(12);
    side->addWidget(new LText(Texts::tr("Flag builder"), page));
    auto builder = std::make_shared<QAnchorLayoutFlagBuilder>();
    auto* output = new LLineEdit(page);  // data, selectable: the text the builder wrote
    output->setObjectName(QStringLiteral("AnchorBuilderOutput"));
    output->setReadOnly(true);
    auto* align = new LComboBox(page);
    align->setObjectName(QStringLiteral("AnchorBuilderAlign"));
    const std::pair<const char*, QAnchorLayoutFlagBuilder::Alignment> aligns[] = {
        {QT_TRANSLATE_NOOP("LayoutPage", "Left"), QAnchorLayoutFlagBuilder::Left},
        {QT_TRANSLATE_NOOP("LayoutPage", "Right"), QAnchorLayoutFlagBuilder::Right},
        {QT_TRANSLATE_NOOP("LayoutPage", "Top"), QAnchorLayoutFlagBuilder::Top},
        {QT_TRANSLATE_NOOP("LayoutPage", "Bottom"), QAnchorLayoutFlagBuilder::Bottom},
        {QT_TRANSLATE_NOOP("LayoutPage", "Centre"), QAnchorLayoutFlagBuilder::Center},
        {QT_TRANSLATE_NOOP("LayoutPage", "Horizontal centre"), QAnchorLayoutFlagBuilder::HCenter},
        {QT_TRANSLATE_NOOP("LayoutPage", "Vertical centre"), QAnchorLayoutFlagBuilder::VCenter},
    };
    for (const auto& a : aligns)
        align->addItem(QCoreApplication::translate("LayoutPage", a.first), int(a.second));
    auto* margin = new QSpinBox(page);
    margin->setRange(0, 64);
    margin->setValue(8);
    auto refresh = [=] { output->setText(QStringLiteral("\"%1\"").arg(builder->getFlags())); };
    auto* row1 = new QHBoxLayout;
    auto* toParent = new QPushButton(Texts::tr("Align to parent"), page);
    auto* toSibling = new QPushButton(Texts::tr("Align to previous"), page);
    row1->addWidget(align);
    row1->addWidget(toParent);
    row1->addWidget(toSibling);
    auto* row2 = new QHBoxLayout;
    toParent->setObjectName(QStringLiteral("AnchorBuilderToParent"));
    auto* addMargin = new QPushButton(Texts::tr("Margin"), page);
    addMargin->setObjectName(QStringLiteral("AnchorBuilderMargin"));
    auto* clear = new QPushButton(Texts::tr("Clear"), page);
    auto* apply = new QPushButton(Texts::tr("Apply to block"), page);
    apply->setObjectName(QStringLiteral("AnchorBuilderApply"));
    row2->addWidget(margin);
    row2->addWidget(addMargin);
    row2->addWidget(clear);
    row2->addWidget(apply);
    side->addLayout(row1);
    side->addLayout(row2);
    side->addWidget(output);
    side->addStretch(1);
    auto current = [=] { return QAnchorLayoutFlagBuilder::Alignment(align->currentData().toInt()); };
    QObject::connect(toParent, &QPushButton::clicked, page, [=] {
        builder->AlignToParent(current());
        refresh();
    });
    QObject::connect(toSibling, &QPushButton::clicked, page, [=] {
        builder->AlignToSibling(QStringLiteral("-1"), current());
        refresh();
    });
    QObject::connect(addMargin, &QPushButton::clicked, page, [=] {
        const double m = margin->value();
        builder->Margin(m, m, m, m);
        refresh();
    });
    QObject::connect(clear, &QPushButton::clicked, page, [=] {
        *builder = QAnchorLayoutFlagBuilder();
        refresh();
    });
    QObject::connect(apply, &QPushButton::clicked, page, [=] {
        flags->setText(builder->getFlags());
        Q_EMIT flags->textEdited(flags->text());
    });
    refresh();
    return page;
}

void DemoLayoutPage(QWidget* page) {
    // Build "Right, Bottom, Margin:8 8 8 8, , " and put it on the note block.
    auto* pick = page->findChild<QComboBox*>(QStringLiteral("AnchorChildPicker"));
    auto* align = page->findChild<QComboBox*>(QStringLiteral("AnchorBuilderAlign"));
    auto* toParent = page->findChild<QPushButton*>(QStringLiteral("AnchorBuilderToParent"));
    auto* margin = page->findChild<QPushButton*>(QStringLiteral("AnchorBuilderMargin"));
    auto* apply = page->findChild<QPushButton*>(QStringLiteral("AnchorBuilderApply"));
    if (!pick || !align || !toParent || !margin || !apply)
        return;
    pick->setCurrentIndex(3);
    align->setCurrentIndex(1);  // Right
    toParent->click();
    align->setCurrentIndex(3);  // Bottom
    toParent->click();
    margin->click();
    apply->click();
}
