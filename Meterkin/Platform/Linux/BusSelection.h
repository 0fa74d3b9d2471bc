#pragma once

/// Keeps a session bus that takes clients and never answers them out of this process: the kit would
/// wait for it for ever, before anything is shown. Before the kit starts.
void selectBus();
