#include "platform/motion_preference.h"

#include <TargetConditionals.h>

#if TARGET_OS_OSX
#import <AppKit/AppKit.h>
#else
#import <UIKit/UIKit.h>
#endif

namespace zenvor {

bool systemPrefersReducedMotion()
{
#if TARGET_OS_OSX
    return [NSWorkspace sharedWorkspace].accessibilityDisplayShouldReduceMotion;
#else
    return UIAccessibilityIsReduceMotionEnabled();
#endif
}

} // namespace zenvor
