// The standard UI library's controls in one window, for the developer tools' "UI-Demo" button:
// the theme switch, colour tokens, icons, font tokens, the dialog styles and the toast.
// The kit loads this module and calls showMainWnd(); the window deletes itself when closed.

#include <LxStdUI/FontToken.h>
#include <LxStdUI/LDialog.h>
#include <LxStdUI/MultiLang.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/SvgIconRenderer.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxGuiHelper.h>

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

const char* const kColorTokens[] = {
    "ct_text_h1",        "ct_text_h2",    "ct_text_h3",      "ct_text_link",      "ct_text_highlight", "ct_text_green",
    "ct_text_red",       "ct_bg_primary", "ct_bg_secondary", "ct_bg_tertiary",    "ct_bg_blue",        "ct_bg_hover",
    "ct_line_separator", "ct_border",     "ct_lime",         "ct_button_primary", "ct_toast_bg",       "ck_blue300_50",
};
const char* const kIcons[] = {"img/image_loading.svg", "img/image_failed.svg"};

// Swatches, icons and texts that repaint from the provider whenever the theme changes.
class DemoWindow : public QWidget {
public:
    DemoWindow() {
        setObjectName(QStringLiteral("LxStdUiDemoMainWnd"));
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowTitle(QStringLiteral("LxStdUI Demo"));
        auto* scroll = new QScrollArea(this);
        scroll->setWidgetResizable(true);
        auto* body = new QWidget;
        auto* layout = new QVBoxLayout(body);
        layout->addWidget(BuildThemeRow());
        layout->addWidget(BuildColors());
        layout->addWidget(BuildIcons());
        layout->addWidget(BuildFonts());
        layout->addWidget(BuildDialogs());
        layout->addStretch(1);
        scroll->setWidget(body);
        auto* outer = new QVBoxLayout(this);
        outer->setContentsMargins(0, 0, 0, 0);
        outer->addWidget(scroll);
        resize(760, 720);
        connect(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this, [this] { Repaint(); });
        Repaint();
    }

private:
    QWidget* BuildThemeRow() {
        auto* box = new QGroupBox(QStringLiteral("Theme"));
        auto* row = new QHBoxLayout(box);
        auto* light = new QRadioButton(QStringLiteral("Light"));
        auto* dark = new QRadioButton(QStringLiteral("Dark"));
        (lx_ui_theme::Manager::instance()->isDark() ? dark : light)->setChecked(true);
        row->addWidget(light);
        row->addWidget(dark);
        row->addStretch(1);
        connect(light, &QRadioButton::toggled, this, [](bool on) {
            if (on)
                lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light);
        });
        connect(dark, &QRadioButton::toggled, this, [](bool on) {
            if (on)
                lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        });
        return box;
    }

    QWidget* BuildColors() {
        auto* box = new QGroupBox(QStringLiteral("Colour tokens"));
        auto* grid = new QGridLayout(box);
        int i = 0;
        for (const char* token : kColorTokens) {
            auto* swatch = new QLabel;
            swatch->setFixedSize(28, 18);
            swatch->setProperty("lx_token", QString::fromLatin1(token));
            m_vecSwatches << swatch;
            auto* name = new QLabel(QString::fromLatin1(token));
            grid->addWidget(swatch, i / 3, (i % 3) * 2);
            grid->addWidget(name, i / 3, (i % 3) * 2 + 1);
            ++i;
        }
        return box;
    }

    QWidget* BuildIcons() {
        auto* box = new QGroupBox(QStringLiteral("Icons"));
        auto* row = new QHBoxLayout(box);
        for (const char* path : kIcons) {
            auto* icon = new QLabel;
            icon->setFixedSize(48, 48);
            icon->setProperty("lx_icon", QString::fromLatin1(path));
            m_vecIcons << icon;
            row->addWidget(icon);
            row->addWidget(new QLabel(QString::fromLatin1(path)));
        }
        row->addStretch(1);
        return box;
    }

    QWidget* BuildFonts() {
        auto* box = new QGroupBox(QStringLiteral("Font tokens"));
        auto* col = new QVBoxLayout(box);
        for (const auto& token : LFontTokenLoader::getAllFontTokens()) {
            auto* label =
                new QLabel(QStringLiteral("%1 (%2 px) 行情 Quotes 123").arg(token.strName).arg(token.i32PixelSize));
            label->setFont(LFontTokenLoader::font(token.strName));
            m_vecTexts << label;
            col->addWidget(label);
        }
        return box;
    }

    QWidget* BuildDialogs() {
        auto* box = new QGroupBox(QStringLiteral("Dialogs and toast"));
        auto* row = new QHBoxLayout(box);
        auto* plain = new QPushButton(QStringLiteral("LDialog style 1"));
        auto* tip = new QPushButton(QStringLiteral("LDialog style 2"));
        auto* toast = new QPushButton(QStringLiteral("Toast"));
        row->addWidget(plain);
        row->addWidget(tip);
        row->addWidget(toast);
        row->addStretch(1);
        connect(plain, &QPushButton::clicked, this, [this] {
            auto* dlg = new LDialog(nullptr);
            dlg->setLxStyle(1);
            dlg->setTitle(QStringLiteral("Northwind Capital"));
            dlg->setContentWidget(new QLabel(QStringLiteral("A plain frame for custom content.")));
            dlg->showCenter(this, 360);
        });
        connect(tip, &QPushButton::clicked, this, [this] {
            auto* dlg = new LDialog(nullptr);
            dlg->setLxStyle(2);
            dlg->setTitle(lxstdui_multi_lang::gui_helper::textTip());
            dlg->setContent(lxstdui_multi_lang::gui_helper::textPageLoadFailed());
            dlg->setConfirmText(lxstdui_multi_lang::gui_helper::textIKnow());
            dlg->showCenter(this, -1);
        });
        connect(toast, &QPushButton::clicked, this,
                [] { gui::ShowSimpleToast(QStringLiteral("Order ZQX-1042 filled"), TriBool::True, 2000); });
        return box;
    }

    void Repaint() {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        setStyleSheet(QStringLiteral("#LxStdUiDemoMainWnd, QScrollArea > QWidget > QWidget { background: %1; } QLabel, "
                                     "QGroupBox, QRadioButton { color: %2; }")
                          .arg(res->colorString(QStringLiteral("ct_bg_primary")),
                               res->colorString(QStringLiteral("ct_text_h1"))));
        for (QLabel* swatch : qAsConst(m_vecSwatches))
            if (swatch)
                swatch->setStyleSheet(QStringLiteral("background: %1; border: 1px solid %2;")
                                          .arg(res->colorString(swatch->property("lx_token").toString()),
                                               res->colorString(QStringLiteral("ct_border"))));
        for (QLabel* icon : qAsConst(m_vecIcons)) {
            if (!icon)
                continue;
            QPixmap pix(icon->size());
            pix.fill(Qt::transparent);
            if (auto renderer = lx_ui_res::SvgIconRenderer::get(icon->property("lx_icon").toString())) {
                QPainter p(&pix);
                renderer->render(&p, QRectF(pix.rect()));
            }
            icon->setPixmap(pix);
        }
    }

    QList<QPointer<QLabel>> m_vecSwatches;
    QList<QPointer<QLabel>> m_vecIcons;
    QList<QPointer<QLabel>> m_vecTexts;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) void showMainWnd() {
    auto* wnd = new DemoWindow;
    wnd->show();
    wnd->raise();
}
