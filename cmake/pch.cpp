// Nothing but its precompiled header, which other targets reuse.
