#pragma once
// Names of the UI library's own icons, for LIconButton::setIconPath and SvgIconRenderer::get.
// Each has a "_dark" variant that the Dark theme picks; hover, pressed and disabled looks are drawn
// by the button.

namespace LResource {

constexpr const char icon_pic_loading_normal[] = "icons/icon_pic_loading_normal.svg";
constexpr const char icon_pic_refresh_24_normal[] = "icons/icon_pic_refresh_24_normal.svg";
constexpr const char icon_picture_rupture_20_normal[] = "icons/icon_picture_rupture_20_normal.svg";
constexpr const char icon_arrow_left_normal[] = "icons/icon_arrow_left_normal.svg";
constexpr const char icon_arrow_right_normal[] = "icons/icon_arrow_right_normal.svg";
constexpr const char icon_translate_normal[] = "icons/icon_translate_normal.svg";
constexpr const char icon_translate_active[] = "icons/icon_translate_active.svg";  // one look in both themes
constexpr const char icon_zoom_in_normal[] = "icons/icon_zoom_in_normal.svg";
constexpr const char icon_zoom_out_normal[] = "icons/icon_zoom_out_normal.svg";
constexpr const char icon_close_normal[] = "icons/icon_close_normal.svg";
constexpr const char icon_maximize_normal[] = "icons/icon_maximize_normal.svg";
constexpr const char icon_restore_normal[] = "icons/icon_restore_normal.svg";
constexpr const char icon_minimize_normal[] = "icons/icon_minimize_normal.svg";

}  // namespace LResource
