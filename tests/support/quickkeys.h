#pragma once

// Keys of all databases of this process are derived in far fewer rounds from now on: with all of
// them, a test that has a catalogue of its own would spend most of its time on that. Such a
// catalogue can be opened only by programs that call this, too.
void UseQuickKeys();
