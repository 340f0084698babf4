#pragma once

/// A window's life for the search for leaks: it loads results of both kinds and a damaged one, is looked at, emptied and closed. False if
/// the results did not load.
bool liveOnce();

/// Loses some memory, so that the search has something to find.
void loseMemory();
