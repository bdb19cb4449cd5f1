// Compiled only for its precompiled header.
