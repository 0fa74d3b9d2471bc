#pragma once

class QIcon;

/// The program's icon for its windows, drawn anew at each call.
QIcon applicationIcon();
