#import "platform/SpaceNaming.h"

namespace vembrix {

SpaceNaming* SpaceNaming::shared() { return nullptr; }

}  // namespace vembrix
