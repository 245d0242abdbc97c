#pragma once
// Kit helpers for the host: the core's start-up parameters and the one-call toast.
//
// Toasts appear on the primary screen (on a multi-screen desktop the virtual desktop's middle can
// fall between two screens). A toast of more than one second slides up from the bottom edge and
// ends 50 pixels above it; shorter ones appear a little below the middle of the screen.

#include <LxCore/CoreInit.h>
#include <LxCore/TriBool.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QString>

namespace gui {

// The host calls this first of all, before its core initialises, and hands the result to
// core::InitCore: archive functions and the scheme-URL load-failure handler.
LXUIKIT_EXPORT core::CoreInitParam GetCoreInitParamVeryFirst();

// Shows a toast and returns at once; it deletes itself after durationMs.
LXUIKIT_EXPORT void ShowSimpleToast(QString text, TriBool state, int durationMs);

}  // namespace gui
