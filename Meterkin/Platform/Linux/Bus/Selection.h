#pragma once

/// Keeps Qt's own connection from a session bus that takes clients and does not answer them: Qt
/// would wait for it for ever, before anything is shown. What of Qt needs a bus, as the link to
/// screen readers, does without one then; a BusConnection waits for it. Before Qt starts; waits for
/// the bus a few seconds.
void selectBus();
