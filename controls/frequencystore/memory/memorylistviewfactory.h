#pragma once

struct EntryColumns;
class FrequencyStoreListView;
class QWidget;

/// Makes a view of the memory channels; the parent owns it. Whoever registers the list knows no more of its
/// view.
FrequencyStoreListView* CreateMemorySystemListView(QWidget* parent, unsigned listId);
/// What such a view shows of each channel of a kind of receiver.
template <bool IsVUHF>
const EntryColumns& MemoryColumns();
