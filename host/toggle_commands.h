/// The four commands that flip a switch of the navigation and report its new state on the command line.
#ifndef HOST_TOGGLE_COMMANDS_H
#define HOST_TOGGLE_COMMANDS_H

/// Main thread. Each does nothing, and prints nothing, while there is no AutoCadProxy.
void toggleRotationCenter();
void toggleRotationAxis();
void toggleScrollMode();
void toggleObjectMoveMode();

#endif
