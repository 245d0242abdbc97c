#pragma once
// The gallery's own texts in Chinese and English. They come from Qt Linguist files
// (translations/gallery_zh_CN.ts, gallery_en_US.ts) compiled into the gallery; the translator
// follows core::lang like the libraries' translators do, and every swap sends
// QEvent::LanguageChange to the widgets.

// Installs the translator for the current language and swaps it whenever the language changes.
void InstallGalleryTranslator();
