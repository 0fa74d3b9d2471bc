#pragma once

/// Has the application speak the user's language where there is a catalogue of it, English
/// elsewhere. Once, after the application was made and before anything asks for a text.
void loadTranslation();
