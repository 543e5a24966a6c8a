#import "platform/macos/support/RunCommand.h"

#import <Foundation/Foundation.h>

#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

NSArray<NSString*>* nativeArguments(const LogCommand& command) {
  auto* arguments = [NSMutableArray<NSString*> arrayWithCapacity:command.arguments.size()];
  for (const std::string& argument : command.arguments) {
    [arguments addObject:nativeString(argument)];
  }
  return arguments;
}

LogTool::Result run(const LogCommand& command) {
  auto* task = [[NSTask alloc] init];
  auto* pipe = [NSPipe pipe];
  task.executableURL = [NSURL fileURLWithPath:nativeString(command.executable)];
  task.arguments = nativeArguments(command);
  task.standardInput = NSFileHandle.fileHandleWithNullDevice;
  task.standardOutput = pipe;
  task.standardError = pipe;
  NSError* error = nil;
  if (![task launchAndReturnError:&error]) {
    return LogTool::LaunchFailure{utf8String(error.localizedDescription)};
  }
  // Read before waiting, because the tool stops when the pipe is full. A pipe that cannot be read
  // has no output.
  NSData* data = [pipe.fileHandleForReading readDataToEndOfFileAndReturnError:nil];
  [task waitUntilExit];
  return LogTool::Output{std::string(static_cast<const char*>(data.bytes), data.length)};
}

}  // namespace

LogTool::Result runCommand(const LogCommand& command) {
  @autoreleasepool {
    return run(command);
  }
}

}  // namespace vembrix
