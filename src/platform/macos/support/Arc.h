#pragma once

// Native objects are held by strong references and need automatic reference counting.
#if !__has_feature(objc_arc)
#error "Compile the macOS platform with -fobjc-arc"
#endif
