#pragma once
// The gallery's pages. Each page is a factory plus an optional demo step that puts the page into
// an interesting state (used before --screenshot, and by the "Demo" button).

#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

struct GalleryPage {
    QString strName;        // used by --page
    const char* pszTitle;   // English source of the title shown in the page list
    QString Title() const;  // the title in the current language
    std::function<QWidget*(QWidget* parent)> fnCreate;
    std::function<void(QWidget* page)> fnDemo;  // may be empty
};

const std::vector<GalleryPage>& AllGalleryPages();

// Page factories (one per file in pages/).
QWidget* CreateToastPage(QWidget* parent);
void DemoToastPage(QWidget* page);
QWidget* CreateLazyLoadPage(QWidget* parent);
QWidget* CreateArchivePage(QWidget* parent);
void DemoArchivePage(QWidget* page);
QWidget* CreateRichTextPage(QWidget* parent);
void DemoRichTextPage(QWidget* page);
QWidget* CreateWebImagesPage(QWidget* parent);
void DemoWebImagesPage(QWidget* page);
QWidget* CreateDevToolsPage(QWidget* parent);
void DemoDevToolsPage(QWidget* page);
QWidget* CreateDiagnosticsPage(QWidget* parent);
void DemoDiagnosticsPage(QWidget* page);
QWidget* CreateInspectorPage(QWidget* parent);
void DemoInspectorPage(QWidget* page);
QWidget* CreateLayoutPage(QWidget* parent);
void DemoLayoutPage(QWidget* page);
QWidget* CreateSlideshowPage(QWidget* parent);
void DemoSlideshowPage(QWidget* page);
QWidget* CreateFlyoutsPage(QWidget* parent);
void DemoFlyoutsPage(QWidget* page);
QWidget* CreateSettingsPage(QWidget* parent);
QWidget* CreateImagePreviewPage(QWidget* parent);
void DemoImagePreviewPage(QWidget* page);
