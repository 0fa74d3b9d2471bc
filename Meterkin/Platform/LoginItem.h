#pragma once

/// Who wants the program to be started at login.
enum class LoginItemWish {
    Standing, ///< the stored wish, at a start; not above what the user has said elsewhere
    Expressed, ///< the user, at this moment
};

/// The entry that starts the program when the user logs in. Main thread only; each call touches a
/// small file or a local service and returns with the outcome.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// False also when it cannot be told, and when the user has yet to approve the entry.
    virtual bool isEnabled() const = 0;

    /// False when it failed; the state is as before then. Fine to call when already registered.
    virtual bool registerItem(LoginItemWish wish) = 0;
    /// Likewise, when not registered.
    virtual bool unregisterItem() = 0;
};
