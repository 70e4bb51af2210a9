/// \file
/// What the program does to the outside, recorded for who looks at the phone, and the host that carries it out.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "phone.h"
#include "system/faults.h"

namespace phone {

/// The host of this run. Any thread.
Host& CurrentHost();

/// Its clock; once the run is over, the tick at which it ended. Any thread.
std::uint32_t CurrentTick();

/// Forgets all records; called when a run begins.
void ResetOutside(Host& host);
/// Lets go of the host; called when a run ends and its other threads have.
void LeaveHost();

/// Tells the host of an outcome. What a script made fail (ERROR_GEN_FAILURE) is nothing to tell. Any thread.
void ReportOutcome(Operation operation, std::u16string_view name, DWORD error) noexcept;

void RecordBroadcast(const Broadcast& broadcast);
void RecordLaunch(const Launch& launch);
void RecordRegistryWrite(const RegistryWrite& write);

/// Copies of what was recorded so far, in order. Any thread.
std::vector<Broadcast> Broadcasts();
std::vector<Launch> Launches();
std::vector<RegistryWrite> RegistryWrites();

/// The registry of the phone folder: loaded when the phone is switched on. The running instance keeps a file that is
/// not understood aside. Any thread.
void LoadRegistry();

/// True while a thread of the program besides the user-interface thread runs. Any thread.
bool WorkerRuns();

}  // namespace phone
