#include "comparison/Tolerance.h"

#include <AttributeContainer/Attr.h>

#include <cmath>
#include <cstddef>
#include <vector>

namespace QOR::AttributeContainer {

namespace {

// How the difference of two components is scaled, ahead of its rounding to a whole number.
struct InDouble {
    template <class Component> static bool isZero(Component difference, double scale) {
        const double steps = std::round(difference * scale);
        return !(steps < 0 || steps > 0);  // no number is as good as none
    }
};
struct InFloat {
    static bool isZero(float difference, float scale) {
        const float steps = std::round(difference * scale);
        return !(steps < 0 || steps > 0);
    }
};

// One type of value with its tolerance: half a part in `Scale`, per component.
template <class T, int Scale, class Arithmetic> struct Row {
    using Value = T;

    template <class Part> static bool isWithin(const Part& a, const Part& b) {
        if constexpr (requires { a.size(); }) {
            if (a.size() != b.size()) return false;
            for (std::size_t i = 0; i < a.size(); ++i)
                if (!isWithin(a[i], b[i])) return false;
            return true;
        } else {
            const Part difference = a - b;
            return Arithmetic::isZero(difference, Scale);
        }
    }
};

template <class... Rows> struct Table {
    static bool isWithin(const Attribute& first, const Attribute& second) {
        bool isWithin = false;
        (tryRow<Rows>(first, second, isWithin) || ...);
        return isWithin;
    }

private:
    // Whether the row is the one of the attributes' type.
    template <class Row>
    static bool tryRow(const Attribute& first, const Attribute& second, bool& isWithin) {
        const auto* const a = dynamic_cast<const Attr<typename Row::Value>*>(&first);
        const auto* const b = dynamic_cast<const Attr<typename Row::Value>*>(&second);
        if (!a || !b) return false;
        isWithin = Row::isWithin(a->get(), b->get());
        return true;
    }
};

constexpr int coarse = 100'000;
constexpr int fine = 100'000'000;

using Tolerances = Table<Row<double, coarse, InDouble>,        //
                         Row<Vec3d<double>, fine, InDouble>,   //
                         Row<Vec4d<double>, fine, InDouble>,   //
                         Row<Vec3d<float>, fine, InFloat>,     //
                         Row<Vec4d<float>, fine, InDouble>,    // the difference itself is a float
                         Row<SVec2d<double>, fine, InDouble>,  //
                         Row<SVec2d<float>, fine, InFloat>,    //
                         Row<Mat4d<float>, coarse, InFloat>,   // coarse as plain numbers are
                         Row<Mat4d<double>, fine, InDouble>,   //
                         Row<std::vector<double>, coarse, InDouble>,       //
                         Row<std::vector<Vec4d<double>>, fine, InDouble>,  //
                         Row<std::vector<SVec2d<double>>, fine, InDouble>,
                         Row<std::vector<std::vector<Vec3d<double>>>, fine, InDouble>,
                         Row<std::vector<Vec3d<float>>, fine, InFloat>,
                         Row<std::vector<Mat4d<double>>, fine, InDouble>>;

}  // namespace

bool isWithinTolerance(const Attribute& first, const Attribute& second) {
    return Tolerances::isWithin(first, second);
}

}  // namespace QOR::AttributeContainer
