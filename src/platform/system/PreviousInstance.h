#pragma once

// True when another living process of this user runs the program from the same installation folder.
// Taken once at the first call and held until the process ends; a killed process leaves no trace.
bool previousInstance();
