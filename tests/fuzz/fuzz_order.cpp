#include "Require.h"

#include "Collation.h"

namespace {

int sign(int number)
{
    return (number > 0) - (number < 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzInput input(data, size);
    const QString& left = input.head;
    const QString& right = input.rest;
    const int order = sign(compareByOrder(left, right));

    require(sign(sortKey(left).compare(sortKey(right))) == order, "the keys tell the order");
    require(sign(compareByOrder(right, left)) == -order, "the order has one direction");
    require(sortKey(folded(left)) == sortKey(left), "case does not count");
    require(sortKey(left.normalized(QString::NormalizationForm_D)) ==
                sortKey(left.normalized(QString::NormalizationForm_C)),
            "how an accent is composed does not count");
    require(folded(left).size() == left.size(), "folding keeps the length");
    require(folded(folded(left)) == folded(left), "folding twice is folding once");
    if (left != right && folded(left) == folded(right))
        require(order == 0, "texts that differ only in case stand together");
    return 0;
}
