#pragma once
// Umbrella header of the business runtime.
#include <LxBusiness/AppListenerManager.h>
#include <LxBusiness/UnitTestManager.h>
