#include "compare/ValueEquality.h"

#include "model/ValueVisit.h"

#include <AttributeContainer/AttrContComparer.h>

#include <charconv>
#include <cmath>
#include <concepts>
#include <cstddef>

namespace qormodel {

namespace {
template <class T> concept NumberGroup = requires(const T& value) {
    value.size();
    { value[0] } -> std::convertible_to<double>;
}
&&!requires(const T& value) { value.begin(); };
template <class T> concept List = requires(const T& value) {
    value.begin();
    value.size();
    value[std::size_t{0}];
}
&&!std::same_as<T, std::string> && !std::same_as<T, ac::StringMap>;

template <class T> bool isSame(const T& a, const T& b, double greatest);

template <std::floating_point T> bool isSameNumber(T a, T b, double greatest) {
    if (a == b || (std::isnan(a) && std::isnan(b))) return true;
    return greatest > 0 && std::abs(static_cast<double>(a) - static_cast<double>(b)) <= greatest;
}

template <class T> bool areSame(const T& a, const T& b, std::size_t size, double greatest) {
    for (std::size_t i = 0; i < size; ++i)
        if (!isSame(a[i], b[i], greatest)) return false;
    return true;
}

template <class T> bool isSame(const T& a, const T& b, double greatest) {
    if constexpr (std::floating_point<T>) return isSameNumber(a, b, greatest);
    else if constexpr (List<T>) return a.size() == b.size() && areSame(a, b, a.size(), greatest);
    else if constexpr (NumberGroup<T>) return areSame(a, b, T::size(), greatest);
    else return a == b;
}

// The arithmetic of the library's comparer, on one pair.
class PairComparer : public ac::AttrContComparer {
public:
    PairComparer() : AttrContComparer(allCategories, withTolerance) {}

    bool isSame(const ac::Attribute& first, const ac::Attribute& second) const {
        return first == second || handleAttributes(&first, &second) == 0;
    }
};

double greatestOf(const Tolerance& tolerance) { return tolerance.greatest.value_or(0); }

// Calls `visit` with the values of both, where they are of one type.
template <class Visit>
bool visitBoth(const ac::Attribute& first, const ac::Attribute& second, Visit&& visit) {
    if (first.getClassName() != second.getClassName()) return false;
    bool isDone = false;
    visitValue(first, [&]<class T>(const T& value) {
        const auto* const other = dynamic_cast<const ac::Attr<T>*>(&second);
        if (!other) return;
        visit(value, other->get());
        isDone = true;
    });
    return isDone;
}
}  // namespace

std::optional<Tolerance> Tolerance::parse(const std::string& text) {
    if (text == "library") return Tolerance{true, std::nullopt};
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size() || !(number >= 0))
        return std::nullopt;
    return Tolerance{false, number};
}

bool isSameValue(const ac::Attribute& first, const ac::Attribute& second,
                 const Tolerance& tolerance) {
    if (tolerance.isLibrary) return PairComparer().isSame(first, second);
    bool isSameSoFar = false;
    visitBoth(first, second, [&]<class T>(const T& a, const T& b) {
        isSameSoFar = isSame(a, b, greatestOf(tolerance));
    });
    return isSameSoFar;
}

std::optional<ListDelta> compareLists(const ac::Attribute& first, const ac::Attribute& second,
                                      const Tolerance& tolerance) {
    std::optional<ListDelta> result;
    visitBoth(first, second, [&]<class T>(const T& a, const T& b) {
        if constexpr (List<T>) {
            ListDelta delta{a.size(), b.size(), 0, 0};
            for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
                const typename T::value_type left = a[i], right = b[i];
                if (isSame(left, right, greatestOf(tolerance))) continue;
                if (delta.numDifferent++ == 0) delta.place = i;
            }
            result = delta;
        }
    });
    return result;
}

}  // namespace qormodel
