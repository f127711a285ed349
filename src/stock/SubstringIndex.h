#pragma once

#include <QString>

#include <optional>
#include <vector>

// Tells the first text of a fixed list that contains a given one: the answer of going through the
// list from its start, in time by the length of the given text alone. A suffix automaton over the
// joined list (Blumer and others, "The smallest automaton recognizing the subwords of a text",
// 1985).
class SubstringIndex
{
public:
    explicit SubstringIndex(const std::vector<QString>& texts);

    // The place in the list, from 0; nothing where no text contains it. Compares code by code.
    std::optional<int> firstContaining(const QString& text) const;

private:
    struct State
    {
        int length = 0;
        int link = -1;
        int firstEnd =
            0; // in the joined text: the end of the first place where the state's words stand
        int firstEdge = -1;
    };
    struct Edge
    {
        char16_t character;
        int target;
        int next;
    };

    int edge(int state, char16_t character) const;
    void addEdge(int state, char16_t character, int target);
    void copyEdges(int from, int to);
    int append(int last, char16_t character, int end);

    std::vector<State> states_;
    std::vector<Edge> edges_;
    std::vector<int> textAt_; // by place in the joined text
};
