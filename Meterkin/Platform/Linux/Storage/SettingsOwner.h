#pragma once

/// Whether this is root with another user's settings, as under "sudo -E" or "su": what root writes
/// there would no longer be the user's.
bool wouldTakeSettingsOver();
