#include "GalleryWindow.h"

#include "GalleryPages.h"

#include <LxCore/Environment.h>
#include <LxCore/SafeQtConnect.h>
#include <LxStdUI/FontToken.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

GalleryWindow::GalleryWindow(QWidget* parent) : QMainWindow(parent) {
    setObjectName(QStringLiteral("GalleryWindow"));
    auto* central = new QWidget(this);
    central->setObjectName(QStringLiteral("GalleryCentral"));
    auto* root = new QVBoxLayout(central);
    root->setContentsMargins(0, 0, 0, 0);
    root->setSpacing(0);

    auto* bar = new QWidget(central);
    bar->setObjectName(QStringLiteral("GalleryBar"));
    auto* barLayout = new QHBoxLayout(bar);
    barLayout->setContentsMargins(16, 10, 16, 10);
    m_pTitle = new QLabel(bar);
    m_pTitle->setFont(LFontTokenLoader::font(QStringLiteral("title1")));
    m_pTheme = new QComboBox(bar);
    m_pTheme->setObjectName(QStringLiteral("GalleryTheme"));
    m_pTheme->addItem(QString(), int(lx_ui_theme::Manager::Light));
    m_pTheme->addItem(QString(), int(lx_ui_theme::Manager::Dark));
    m_pLang = new QComboBox(bar);
    m_pLang->setObjectName(QStringLiteral("GalleryLanguage"));
    // Each language is named in itself, whatever the current one, so that a reader finds theirs.
    m_pLang->addItem(QStringLiteral("中文"), int(core::lang::kLangZhCN));
    m_pLang->addItem(QStringLiteral("English"), int(core::lang::kLangEnUS));
    m_pDemo = new QPushButton(bar);
    m_pDemo->setObjectName(QStringLiteral("GalleryDemo"));
    m_pThemeLabel = new QLabel(bar);
    m_pLangLabel = new QLabel(bar);
    barLayout->addWidget(m_pTitle);
    barLayout->addStretch(1);
    barLayout->addWidget(m_pThemeLabel);
    barLayout->addWidget(m_pTheme);
    barLayout->addSpacing(12);
    barLayout->addWidget(m_pLangLabel);
    barLayout->addWidget(m_pLang);
    barLayout->addSpacing(12);
    barLayout->addWidget(m_pDemo);
    root->addWidget(bar);

    auto* body = new QHBoxLayout;
    body->setContentsMargins(0, 0, 0, 0);
    body->setSpacing(0);
    m_pList = new QListWidget(central);
    m_pList->setObjectName(QStringLiteral("GalleryPageList"));
    m_pList->setFixedWidth(180);
    m_pStack = new QStackedWidget(central);
    for (const GalleryPage& page : AllGalleryPages()) {
        auto* item = new QListWidgetItem(m_pList);
        item->setData(Qt::UserRole, page.strName);
        auto* holder = new QWidget(m_pStack);  // the page itself is created when first opened
        holder->setLayout(new QVBoxLayout);
        holder->layout()->setContentsMargins(0, 0, 0, 0);
        m_pStack->addWidget(holder);
    }
    body->addWidget(m_pList);
    body->addWidget(m_pStack, 1);
    root->addLayout(body, 1);
    setCentralWidget(central);

    LX_SAFE_CONNECT_IN("Gallery", m_pList.data(), &QListWidget::currentRowChanged, this, [this](int row) {
        if (row < 0 || row >= int(AllGalleryPages().size()))
            return;
        PageWidget(AllGalleryPages()[size_t(row)].strName);
        m_pStack->setCurrentIndex(row);
    });
    LX_SAFE_CONNECT_IN(
        "Gallery", m_pTheme.data(), QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this](int) {
            lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Theme(m_pTheme->currentData().toInt()));
        });
    LX_SAFE_CONNECT_IN("Gallery", m_pLang.data(), QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                       [this](int) { core::lang::SetLanguageId(m_pLang->currentData().toInt()); });
    LX_SAFE_CONNECT_IN("Gallery", m_pDemo.data(), &QPushButton::clicked, this, &GalleryWindow::RunDemo);
    LX_SAFE_CONNECT_IN("Gallery", lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this, [this] {
        ApplyTheme();
        SyncSwitches();
    });
    LX_SAFE_CONNECT_IN("Gallery", core::lang::Notifier::instance(), &core::lang::Notifier::languageChanged, this,
                       [this] { SyncSwitches(); });

    Retranslate();
    SyncSwitches();
    ApplyTheme();
    m_pList->setCurrentRow(0);
    resize(1200, 800);
}

bool GalleryWindow::OpenPage(const QString& name) {
    const auto& pages = AllGalleryPages();
    for (size_t i = 0; i < pages.size(); ++i)
        if (pages[i].strName.compare(name, Qt::CaseInsensitive) == 0) {
            m_pList->setCurrentRow(int(i));
            return true;
        }
    return false;
}

QString GalleryWindow::CurrentPageName() const {
    const int row = m_pList->currentRow();
    return row >= 0 && row < int(AllGalleryPages().size()) ? AllGalleryPages()[size_t(row)].strName : QString();
}

QWidget* GalleryWindow::PageWidget(const QString& name) {
    auto it = m_mapPages.find(name);
    if (it != m_mapPages.end() && it->second)
        return it->second;
    const auto& pages = AllGalleryPages();
    for (size_t i = 0; i < pages.size(); ++i) {
        if (pages[i].strName != name)
            continue;
        QWidget* holder = m_pStack->widget(int(i));
        QWidget* page = pages[i].fnCreate(holder);
        page->setObjectName(QStringLiteral("GalleryPage_") + name);
        holder->layout()->addWidget(page);
        page->show();  // a child added to a holder already on screen stays hidden otherwise
        m_mapPages[name] = page;
        return page;
    }
    return nullptr;
}

void GalleryWindow::RunDemo() {
    const QString name = CurrentPageName();
    for (const GalleryPage& page : AllGalleryPages())
        if (page.strName == name && page.fnDemo)
            page.fnDemo(PageWidget(name));
}

void GalleryWindow::changeEvent(QEvent* e) {
    QMainWindow::changeEvent(e);
    if (e->type() == QEvent::LanguageChange) {
        Retranslate();
        RebuildPages();
    }
}

void GalleryWindow::Retranslate() {
    setWindowTitle(tr("LxUIKit Gallery"));
    m_pTitle->setText(tr("LxUIKit Gallery"));
    m_pThemeLabel->setText(tr("Theme"));
    m_pTheme->setItemText(m_pTheme->findData(int(lx_ui_theme::Manager::Light)), tr("Light"));
    m_pTheme->setItemText(m_pTheme->findData(int(lx_ui_theme::Manager::Dark)), tr("Dark"));
    m_pLangLabel->setText(tr("Language"));
    m_pDemo->setText(tr("Demo"));
    m_pDemo->setToolTip(tr("Put the current page into its demonstration state"));
    const auto& pages = AllGalleryPages();
    for (int i = 0; i < m_pList->count() && i < int(pages.size()); ++i)
        m_pList->item(i)->setText(pages[size_t(i)].Title());
}

// Pages write their texts once, when they are made, so the pages made so far are dropped and the
// current one is made again in the new language (the others are made when next opened). Whatever
// was done on them is lost: demo states, typed text and scroll positions start over.
void GalleryWindow::RebuildPages() {
    for (auto& entry : m_mapPages) {
        if (!entry.second)
            continue;
        // Later, not now: a nested event loop (a file dialog of the page) may still be running.
        entry.second->hide();
        entry.second->deleteLater();
    }
    m_mapPages.clear();
    const QString current = CurrentPageName();
    if (!current.isEmpty())
        PageWidget(current);
}

void GalleryWindow::SyncSwitches() {
    const QSignalBlocker b1(m_pTheme.data());
    const QSignalBlocker b2(m_pLang.data());
    m_pTheme->setCurrentIndex(m_pTheme->findData(int(lx_ui_theme::Manager::instance()->currentTheme())));
    m_pLang->setCurrentIndex(m_pLang->findData(core::lang::GetLanguageId()));
}

void GalleryWindow::ApplyTheme() {
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    const QString bg = res->colorString(QStringLiteral("ct_bg_primary"));
    const QString bg2 = res->colorString(QStringLiteral("ct_bg_secondary"));
    const QString bg3 = res->colorString(QStringLiteral("ct_bg_tertiary"));
    const QString text = res->colorString(QStringLiteral("ct_text_h1"));
    const QString text2 = res->colorString(QStringLiteral("ct_text_h2"));
    const QString line = res->colorString(QStringLiteral("ct_line_separator"));
    const QString border = res->colorString(QStringLiteral("ct_border"));
    const QString link = res->colorString(QStringLiteral("ct_text_link"));
    setStyleSheet(
        QStringLiteral(
            "QMainWindow, QWidget#GalleryCentral, QStackedWidget, QScrollArea, QScrollArea > QWidget > QWidget"
            " { background:%1; color:%4; }"
            "QWidget#GalleryBar { background:%2; border-bottom:1px solid %6; }"
            "QListWidget#GalleryPageList { background:%2; color:%4; border:none;"
            " border-right:1px solid %6; padding-top:8px; font-size:14px; }"
            "QListWidget#GalleryPageList::item { padding:8px 14px; }"
            "QListWidget#GalleryPageList::item:selected { background:%3; color:%8; border-left:3px solid %8; }"
            "QLabel { color:%4; background:transparent; }"
            "QLabel[role=\"hint\"] { color:%5; }"
            "QGroupBox { color:%4; border:1px solid %7; border-radius:6px; margin-top:14px; padding:10px; }"
            "QGroupBox::title { subcontrol-origin: margin; left:10px; padding:0 4px; }"
            "QPushButton { background:%3; color:%4; border:1px solid %7; border-radius:4px; padding:5px 12px; }"
            "QPushButton:hover { border-color:%8; }"
            "QLineEdit, QComboBox, QPlainTextEdit, QTreeWidget, QListWidget { background:%1; color:%4;"
            " border:1px solid %7; border-radius:4px; padding:3px; }"
            "QComboBox QAbstractItemView { background:%1; color:%4; }"
            "QHeaderView::section { background:%2; color:%5; border:none; padding:4px; }")
            .arg(bg, bg2, bg3, text, text2, line, border, link));
}
