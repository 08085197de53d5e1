#pragma once

class QWidget;

/// The way that the keyboard goes through a window's controls.
namespace tirlo::FocusWalk {

/// Moves the focus to the window's next control, or to the one before, round and round.
///
/// What the pointer can't reach, such as a card that fades away, the keys don't either. The focus
/// of a control that was hidden or disabled goes to nobody: what stands next to it was not chosen.
/// False when there is nowhere to go.
bool step(QWidget &window, bool forward);

/// Has the way come to the controls of this part of a window after all others.
void putLast(QWidget &part);

} // namespace tirlo::FocusWalk
