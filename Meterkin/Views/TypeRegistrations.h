#pragma once

/// What Qt knows of QML types, which it keeps when an engine is gone. Part of each engine,
/// outliving it: the last one clears the registrations, and the next engine makes them again. Main
/// thread only.
class TypeRegistrations {
public:
    TypeRegistrations();
    ~TypeRegistrations();
    TypeRegistrations(const TypeRegistrations &) = delete;
    TypeRegistrations &operator=(const TypeRegistrations &) = delete;
};
