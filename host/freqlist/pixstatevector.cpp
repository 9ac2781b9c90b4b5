#include "host/freqlist/pixstatevector.h"

#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/valuetree/tree.h"
#include "host/valuetree/valueselection.h"

#include <cmath>

namespace {

constexpr float Unplaced = std::numeric_limits<float>::quiet_NaN();

} // namespace

void PixStateVector::SetKeyWords(const QString& frequency, const QString& bandwidth, const QString& type,
                                 const QString& comment) {
    m_frequencyKey = Names::Intern(frequency);
    m_bandwidthKey = Names::Intern(bandwidth);
    m_typeKey = Names::Intern(type);
    m_commentKey = Names::Intern(comment);
    SetDirty(true);
}

void PixStateVector::SetVisible(bool visible) {
    m_visible = visible;
    SetDirty(true);
}

void PixStateVector::SetObserve(bool observe) {
    Observe(observe);
}

bool PixStateVector::Observe(bool observe) {
    const bool before = std::exchange(m_observe, observe);
    if (observe && !before)
        SetDirty(true);
    return before;
}

void PixStateVector::SetDirty(bool dirty) {
    const bool becomesDirty = dirty && !m_dirty;
    m_dirty = dirty;
    if (becomesDirty && OnDirty)
        OnDirty();
}

void PixStateVector::SetHMapping(IHasHMap* map, int width) {
    m_map = map;
    m_pixels.assign(static_cast<size_t>(std::max(width, 0)), PixState());
    m_places.clear();
    m_marks = 0;
    SetDirty(true);
}

void PixStateVector::SetFocusFlag(bool focus) {
    m_focus = focus;
    m_marks = 0;
    SetDirty(true);
}

int PixStateVector::ValueToPixel(double hertz) const {
    const double position = m_map ? m_map->MapToPixel(hertz) : -1.0;
    return position >= 0 && position < static_cast<double>(m_pixels.size()) ? static_cast<int>(position) : -1;
}

int PixStateVector::ValueToEmptyPixel(double hertz) const {
    const int wanted = ValueToPixel(hertz);
    if (wanted < 0)
        return -1;
    const int width = static_cast<int>(m_pixels.size());
    for (int distance = 0; distance < width; ++distance) {
        for (const int pixel : {wanted - distance, wanted + distance}) {
            if (pixel >= 0 && pixel < width && GetClearLine(pixel))
                return pixel;
        }
    }
    return -1;
}

bool PixStateVector::GetClearLine(int pixel) const {
    return pixel >= 0 && static_cast<size_t>(pixel) < m_pixels.size() &&
           m_pixels[static_cast<size_t>(pixel)].IsEmpty();
}

void PixStateVector::SetBandwidth(int pixel, double hertz, unsigned type, int flags) {
    if (!m_map || hertz <= 0)
        return;
    const double centre = m_map->MapToFrequency(pixel + 0.5);
    const double last = static_cast<double>(m_pixels.size()) - 1;
    const double from = std::max(std::floor(m_map->MapToPixel(centre - hertz / 2)), 0.0);
    const double to = std::min(std::floor(m_map->MapToPixel(centre + hertz / 2)), last);
    for (double p = from; p <= to; ++p) {
        PixState& state = m_pixels[static_cast<size_t>(p)];
        state.flags = static_cast<quint8>(state.flags | flags);
        if (state.type == 0)
            state.type = static_cast<char>(type);
    }
}

void PixStateVector::Clean() {
    std::fill(m_pixels.begin(), m_pixels.end(), PixState());
    m_marks = 0;
}

PixStateVector& PixStateVector::operator|=(const PixStateVector& other) {
    for (size_t i = 0; i < std::min(m_pixels.size(), other.m_pixels.size()); ++i) {
        PixState& state = m_pixels[i];
        const PixState& added = other.m_pixels[i];
        state.flags |= added.flags;
        state.count += added.count;
        if (state.type == 0)
            state.type = added.type;
    }
    return *this;
}

void PixStateVector::MarkFocus(double hertz) {
    const int pixel = ValueToPixel(hertz);
    if (pixel >= 0)
        m_pixels[static_cast<size_t>(pixel)].flags |= PixState::Focus;
}

void PixStateVector::ClearFocus() {
    if (m_focus)
        return; // all of the line has it
    for (PixState& state : m_pixels)
        state.flags &= static_cast<quint8>(~PixState::Focus);
}

void PixStateVector::ShowMarked() {
    ClearFocus();
    for (const double hertz : Marked())
        MarkFocus(hertz);
}

void PixStateVector::SetMarked(std::vector<double> frequencies) {
    if (frequencies == m_selected)
        return;
    m_selected = std::move(frequencies);
    SetDirty(true);
}

void PixStateVector::SetShownOnly(std::optional<std::vector<bool>> entries) {
    if (entries == m_shownOnly)
        return;
    m_shownOnly = std::move(entries);
    Clean();
    SetDirty(true);
}

void PixStateVector::MarkIfShown(quint32 entry, quint32 item, double hertz, double bandwidth, char type) {
    if (!m_shownOnly || (entry < m_shownOnly->size() && (*m_shownOnly)[entry]))
        Mark(item, hertz, bandwidth, type);
    else
        ++m_marks; // it is dealt with
}

PixStateVector::Place PixStateVector::placeOf(double hertz, double bandwidth) const {
    const double centre = m_map->MapToPixel(hertz);
    const double halfWidth = bandwidth > 0 ? (m_map->MapToPixel(hertz + bandwidth) - centre) / 2 : 0;
    return {static_cast<float>(centre), static_cast<float>(halfWidth)};
}

void PixStateVector::ForgetMark(size_t item) {
    if (item < m_places.size())
        m_places[item].centre = Unplaced;
    if (m_marks > 0)
        Clean(); // once, however many items are forgotten
}

void PixStateVector::ForgetMarks() {
    m_places.clear();
    Clean();
}

void PixStateVector::Mark(quint32 item, double hertz, double bandwidth, char type) {
    ++m_marks;
    if (!m_map)
        return;
    if (item >= m_places.size())
        m_places.resize(item + size_t(1), {Unplaced, 0});
    Place& place = m_places[item];
    if (std::isnan(place.centre))
        place = placeOf(hertz, bandwidth);
    const double centre = place.centre;
    const double halfWidth = place.halfWidth;
    const double last = static_cast<double>(m_pixels.size()) - 1;
    if (!std::isfinite(centre) || centre + halfWidth < 0 || centre - halfWidth > last + 1)
        return;
    if (halfWidth >= 1) {
        const double to = std::min(std::floor(centre + halfWidth), last);
        for (double p = std::max(std::floor(centre - halfWidth), 0.0); p <= to; ++p) {
            PixState& state = m_pixels[static_cast<size_t>(p)];
            state.flags |= PixState::Bandwidth;
            if (state.type == 0)
                state.type = type;
        }
    }
    if (centre < 0 || centre > last + 1)
        return;
    PixState& state = m_pixels[std::min(static_cast<size_t>(centre), m_pixels.size() - 1)];
    state.flags |= static_cast<quint8>(PixState::Centre | (m_focus ? PixState::Focus : 0));
    state.type = type;
    state.lastItem = item;
    ++state.count;
}

PixStateVectorOnNode::~PixStateVectorOnNode() = default;

void PixStateVectorOnNode::Init(const QString& nodePath) {
    ClearObservable();
    m_node = Tree::Instance()->GetNode(nodePath);
    if (m_node)
        m_node->AddObserver(this);
    SetDirty(true);
}

void PixStateVectorOnNode::SetFixedType(char type) {
    m_fixedType = type;
    m_known = Known::Nothing;
    SetDirty(true);
}

void PixStateVectorOnNode::ClearObservable() {
    if (m_node)
        m_node->DeleteObserver(this);
    m_node = nullptr;
    RemoveAllValues();
}

void PixStateVectorOnNode::RemoveAllValues() {
    m_items.clear();
    m_known = Known::Nothing;
    ForgetMarks();
    SetDirty(true);
}

void PixStateVectorOnNode::Update(Observable* subject, TChangeCode code) {
    if (subject != m_node)
        return;
    if (code == TChangeCode::Removing || code == TChangeCode::MediatorNodeEnds)
        m_node = nullptr;
    if (!m_observe) {
        m_known = Known::Nothing; // the next refresh reads all anew; until then no entry is asked
        return;
    }
    const std::span<Node* const> changed = m_node ? m_node->ChangedChildren() : std::span<Node* const>();
    const bool isKnown = code == TChangeCode::ChildrenChanged || !changed.empty();
    m_known = isKnown && m_known != Known::Nothing ? Known::Values : Known::Nothing;
    if (m_known == Known::Values) {
        for (const Node* entry : changed)
            takeChanged(*entry);
    }
    SetDirty(true);
}

PixStateVectorOnNode::Item PixStateVectorOnNode::read(const Node& entry) const {
    Item item{&entry, 0, 0, entry.GetSerial(), m_fixedType};
    if (const auto* frequency = numeric_cast(entry.FindOwnValue(m_frequencyKey)))
        item.frequency = frequency->ValueAsDouble();
    ValueBase* bandwidth = entry.FindOwnValue(m_bandwidthKey);
    if (const auto* number = numeric_cast(bandwidth))
        item.bandwidth = number->ValueAsDouble();
    else if (const auto* selection = value_cast<ValueSelection>(bandwidth))
        item.bandwidth = selection->GetCurrentValue();
    const auto* type = entry.FindOwn<Value<char>>(m_typeKey);
    if (m_fixedType == 0 && type)
        item.type = type->GetValue();
    return item;
}

/// Takes up entries that came. When entries went, or changed, all are read anew and the line is emptied.
void PixStateVectorOnNode::collect() {
    if (m_known == Known::All)
        return;
    if (m_known == Known::Nothing || !m_node || !takeNew()) {
        m_items.clear();
        m_seenSerial = 0;
        ForgetMarks();
        if (m_node)
            takeNew();
    }
    m_known = Known::All;
}

/// False when some of the items have no entry any more.
bool PixStateVectorOnNode::takeNew() {
    const std::vector<Node*> entries = m_node->ChildrenSince(m_seenSerial);
    if (m_items.size() + entries.size() != m_node->ChildCount())
        return false;
    for (const Node* entry : entries)
        m_items.push_back(read(*entry));
    return true;
}

/// Entries that have no item yet are taken with the new ones.
void PixStateVectorOnNode::takeChanged(const Node& entry) {
    const auto item =
        std::lower_bound(m_items.begin(), m_items.end(), entry.GetSerial(),
                         [](const Item& known, quint32 serial) { return known.serial < serial; });
    if (item == m_items.end() || item->node != &entry)
        return;
    const Item now = read(entry);
    if (now == *item)
        return;
    *item = now;
    ForgetMark(static_cast<size_t>(item - m_items.begin()));
}

void PixStateVectorOnNode::Refresh() {
    if (!GetDirty())
        return;
    collect();
    if (!IsVisible() || MarkCount() == 0)
        Clean();
    for (size_t i = MarkCount(); IsVisible() && i < m_items.size(); ++i)
        MarkIfShown(m_items[i].serial, static_cast<quint32>(i), m_items[i].frequency, m_items[i].bandwidth,
                    m_items[i].type);
    ShowMarked();
    SetDirty(false);
}

bool PixStateVectorOnNode::Tune(quint32 item, QWidget* view) {
    auto* list =
        dynamic_cast<FrequencyNodeMediatorCtrl*>(FreqStore::Instance().GetFrequencies(unsigned(GetListId())));
    // Between a change of the list and the next refresh an item may be out of date.
    if (!list || m_known != Known::All || item >= m_items.size())
        return false;
    FrequencyNodeMediator* mediator = list->Find(m_items[item].node);
    if (mediator)
        static_cast<IFrequencyStoreItem*>(mediator)->SetFrequency(view);
    return mediator != nullptr;
}

int PixStateVectorOnNode::Find(Observable* entry) const {
    const auto found = std::find_if(m_items.begin(), m_items.end(), [entry](const Item& item) {
        return static_cast<const Observable*>(item.node) == entry;
    });
    return found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
}

void PixStateVectorOnNode::UpdateItems(Observable* entry) {
    const int index = Find(entry);
    if (index < 0)
        return;
    m_items[static_cast<size_t>(index)] = read(*m_items[static_cast<size_t>(index)].node);
    ForgetMark(static_cast<size_t>(index));
    SetDirty(true);
}

void PixStateVectorOnNode::RemoveValue(Observable* entry) {
    const int index = Find(entry);
    if (index < 0)
        return;
    m_items.erase(m_items.begin() + index);
    ForgetMarks();
    SetDirty(true);
}

QString PixStateVectorOnNode::ItemText(quint32 item) const {
    // Between a change of the list and the next refresh an item may be out of date.
    if (m_known != Known::All || item >= m_items.size())
        return QString();
    const ValueBase* comment = m_items[item].node->FindOwnValue(m_commentKey);
    return comment ? comment->GetStringValue() : QString();
}

void PixStateVectorOnValue::Init(const QString& valuePath) {
    ClearObservable();
    m_value = Tree::Instance()->GetValue(valuePath);
    if (m_value)
        m_value->AddObserver(this);
    SetDirty(true);
}

void PixStateVectorOnValue::ClearObservable() {
    if (m_value)
        m_value->DeleteObserver(this);
    m_value = nullptr;
    SetDirty(true);
}

void PixStateVectorOnValue::Update(Observable*, TChangeCode code) {
    if (code == TChangeCode::Removing)
        m_value = nullptr;
    if (m_observe)
        SetDirty(true);
}
