#pragma once

/// The system's service behind SMAppService.mainAppService.
struct FakeMainAppService {
    inline static long status = 0;
    inline static bool works = true; ///< whether changes succeed
};
