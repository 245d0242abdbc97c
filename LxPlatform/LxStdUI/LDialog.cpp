#include <LxStdUI/LDialog.h>

#include <LxStdUI/FontToken.h>
#include <LxStdUI/LxStdUILog_p.h>
#include <LxStdUI/MultiLang.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>

#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

LDialog::LDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("LDialog"));
    m_pLayout = new QVBoxLayout(this);
    m_pLayout->setContentsMargins(24, 20, 24, 20);
    m_pLayout->setSpacing(12);

    m_pTitle = new QLabel(this);
    m_pTitle->setObjectName(QStringLiteral("LDialogTitle"));
    m_pTitle->setFont(LFontTokenLoader::font(QStringLiteral("title2")));
    m_pContent = new QLabel(this);
    m_pContent->setObjectName(QStringLiteral("LDialogContent"));
    m_pContent->setWordWrap(true);
    m_pContent->setFont(LFontTokenLoader::font(QStringLiteral("body1")));
    m_pContent->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pConfirm = new QPushButton(lxstdui_multi_lang::common::textOk(), this);
    m_pConfirm->setObjectName(QStringLiteral("LDialogConfirm"));
    m_pConfirm->setDefault(true);
    m_pConfirm->setMinimumWidth(96);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_pConfirm);
    m_pLayout->addWidget(m_pTitle);
    m_pLayout->addWidget(m_pContent, 1);
    m_pLayout->addLayout(buttons);

    LXSTDUI_SAFE_CONNECT(m_pConfirm.data(), &QPushButton::clicked, this, [this] {
        Q_EMIT confirmed();
        accept();
    });
    LXSTDUI_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         [this] { ApplyTheme(); });
    setLxStyle(1);
    ApplyTheme();
}

void LDialog::setLxStyle(int i32Style) {
    m_i32Style = i32Style;
    const bool tip = i32Style == 2;
    m_pTitle->setVisible(tip || !m_pTitle->text().isEmpty());
    m_pConfirm->setVisible(tip || !m_pConfirm->text().isEmpty());
    if (tip)
        setMinimumWidth(320);
}

void LDialog::setTitle(const QString& title) {
    m_pTitle->setText(title);
    m_pTitle->setVisible(!title.isEmpty() || m_i32Style == 2);
    setWindowTitle(title);
}
QString LDialog::title() const { return m_pTitle->text(); }
void LDialog::setContent(const QString& content) { m_pContent->setText(content); }
QString LDialog::content() const { return m_pContent->text(); }
void LDialog::setConfirmText(const QString& text) {
    m_pConfirm->setText(text);
    m_pConfirm->setVisible(!text.isEmpty() || m_i32Style == 2);
}
QString LDialog::confirmText() const { return m_pConfirm->text(); }

void LDialog::setContentWidget(QWidget* widget) {
    if (m_pContentWidget)
        m_pContentWidget->deleteLater();
    m_pContentWidget = widget;
    if (widget)
        m_pLayout->insertWidget(2, widget, 1);
}

void LDialog::showCenter(QWidget* parent, int i32Width) {
    if (i32Width > 0)
        setFixedWidth(i32Width);
    // Settle the final size before placing: wrapped content makes the height depend on the width.
    ensurePolished();
    if (layout())
        layout()->activate();
    adjustSize();
    if (hasHeightForWidth())
        resize(width(), qMax(heightForWidth(width()), minimumSizeHint().height()));
    QRect area;
    if (parent) {
        QWidget* win = parent->window();
        area = QRect(win->mapToGlobal(QPoint(0, 0)), win->size());
    } else if (QScreen* screen = QGuiApplication::primaryScreen()) {
        area = screen->availableGeometry();
    }
    if (!this->parent())
        setAttribute(Qt::WA_DeleteOnClose);
    if (area.isValid())
        move(area.center() - QPoint(width() / 2, height() / 2));
    show();
    raise();
    activateWindow();
}

void LDialog::changeEvent(QEvent* e) {
    QDialog::changeEvent(e);
    if (e->type() == QEvent::LanguageChange && m_pConfirm->text() == lxstdui_multi_lang::common::textOk())
        m_pConfirm->setText(lxstdui_multi_lang::common::textOk());
}

void LDialog::ApplyTheme() {
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    setStyleSheet(QStringLiteral("LDialog { background:%1; }"
                                 "QLabel#LDialogTitle { color:%2; }"
                                 "QLabel#LDialogContent { color:%3; }"
                                 "QPushButton#LDialogConfirm { background:%4; color:white; border:none;"
                                 " border-radius:4px; padding:6px 16px; }")
                      .arg(res->colorString(QStringLiteral("ct_bg_primary")),
                           res->colorString(QStringLiteral("ct_text_h1")),
                           res->colorString(QStringLiteral("ct_text_h2")),
                           res->colorString(QStringLiteral("ct_button_primary"))));
}
