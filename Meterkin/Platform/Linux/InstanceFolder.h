#pragma once

#include "Platform/Linux/Storage/Descriptor.h"

/// The folder of this user's instance on this display, made when it is missing: nobody else may
/// write to it, and no other user can have put it there. Not open when there is no place for one.
Descriptor openInstanceFolder();
