#pragma once

/// The whole run of the window program, from the trajectory library to the end of the event loop.
///
/// Returns the status of the event loop, or -1 after a refused start: another instance of the same title
/// runs, no machine file was chosen, or the chosen one does not exist. A machine file that cannot be used
/// and every fatal message end the process with status 1.
///
/// `argc` and `argv` are those of main. An argument that names a project is opened.
int startTornvale(int argc, char** argv);
