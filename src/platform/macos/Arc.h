#pragma once

// Native objects are kept by strong references alone; without automatic
// reference counting every one of them would leak or dangle.
#if !__has_feature(objc_arc)
#error "Compile the macOS platform with -fobjc-arc"
#endif
