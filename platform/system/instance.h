/// \file
/// The running instance for a phone folder, found across processes by a socket that the kernel drops with its process,
/// so that nothing a crash leaves behind stops a start. One instance a process.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace phone {

/// True when this process is the instance of that name now; false when another one is, or the system refuses.
bool ClaimInstance(const std::string& name);
/// Any process may claim the name afterwards.
void ReleaseInstance();
bool InstanceClaimed();
/// True while another process is the instance of the name that this process could not claim.
bool OtherInstanceRuns();

/// Asks the instance whose name this process could not claim to bring a window forward; `window` is its key, the class,
/// a tab and the title. False when no other instance runs.
bool RaiseOtherInstance(std::string_view window);
/// The keys of the windows that other processes of the same user have asked this one for since the last call, in order.
/// Never blocks.
std::vector<std::string> TakeRaiseRequests();
/// Becomes readable when there are requests; -1 while this process is not the instance.
int RaiseDescriptor();

}  // namespace phone
