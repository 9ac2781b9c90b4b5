#pragma once

class ChangeRecorder;

/// Lets several recorders hear what changes in the tree: the one of the operator's action that is running,
/// and those that follow lists all the time. None is owned; each takes itself out before it ends. GUI thread
/// only.
namespace Recorders {

/// The recorder of the innermost operator's action; null for none.
void SetForAction(ChangeRecorder* recorder);
/// A recorder that stays until it is taken out again.
void Add(ChangeRecorder& recorder);
void Remove(ChangeRecorder& recorder);

} // namespace Recorders
