#include "SubstringIndex.h"

namespace {
// Stands between the texts; no character, so no description holds it.
constexpr char16_t Divider = 0xffff;
} // namespace

SubstringIndex::SubstringIndex(const std::vector<QString>& texts)
{
    size_t length = texts.size();
    for (const QString& text : texts)
        length += static_cast<size_t>(text.size());
    states_.reserve(2 * length + 1);
    edges_.reserve(3 * length);
    textAt_.reserve(length);

    states_.push_back({});
    int last = 0;
    for (size_t number = 0; number < texts.size(); ++number) {
        for (const QChar character : texts[number]) {
            last = append(last, character.unicode(), static_cast<int>(textAt_.size()));
            textAt_.push_back(static_cast<int>(number));
        }
        last = append(last, Divider, static_cast<int>(textAt_.size()));
        textAt_.push_back(static_cast<int>(number));
    }
}

std::optional<int> SubstringIndex::firstContaining(const QString& text) const
{
    int state = 0;
    for (const QChar character : text) {
        const int taken = edge(state, character.unicode());
        if (taken < 0)
            return std::nullopt;
        state = edges_[taken].target;
    }
    if (textAt_.empty())
        return std::nullopt;
    return textAt_[states_[state].firstEnd];
}

int SubstringIndex::edge(int state, char16_t character) const
{
    int at = states_[state].firstEdge;
    while (at >= 0 && edges_[at].character != character)
        at = edges_[at].next;
    return at;
}

void SubstringIndex::addEdge(int state, char16_t character, int target)
{
    edges_.push_back({character, target, states_[state].firstEdge});
    states_[state].firstEdge = static_cast<int>(edges_.size()) - 1;
}

void SubstringIndex::copyEdges(int from, int to)
{
    for (int at = states_[from].firstEdge; at >= 0; at = edges_[at].next)
        addEdge(to, edges_[at].character, edges_[at].target);
}

int SubstringIndex::append(int last, char16_t character, int end)
{
    const int added = static_cast<int>(states_.size());
    states_.push_back({states_[last].length + 1, 0, end, -1});

    int state = last;
    int taken = -1;
    while (state >= 0 && (taken = edge(state, character)) < 0) {
        addEdge(state, character, added);
        state = states_[state].link;
    }
    if (state < 0)
        return added;

    const int target = edges_[taken].target;
    if (states_[state].length + 1 == states_[target].length) {
        states_[added].link = target;
        return added;
    }
    // The words of the target part here: the shorter ones now stand in one place more.
    const int split = static_cast<int>(states_.size());
    states_.push_back(
        {states_[state].length + 1, states_[target].link, states_[target].firstEnd, -1});
    copyEdges(target, split);
    while (state >= 0 && (taken = edge(state, character)) >= 0 && edges_[taken].target == target) {
        edges_[taken].target = split;
        state = states_[state].link;
    }
    states_[target].link = split;
    states_[added].link = split;
    return added;
}
