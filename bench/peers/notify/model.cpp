// W1 model: least code with the library's duties: value behind one pointer, thread-local block and
// pending bits, relations by owning pointer in a vector walked from the back, a virtual action per
// relation and a virtual observer call, initiator test, notify depth, deferred cleanup, notify
// infos in a per-thread table found by type, InfoFailed as the veto.
#include <atomic>
#include <memory>
#include <optional>
#include <typeindex>
#include <vector>

#include "notify/Notify.h"
using namespace bench;
namespace {
enum class Exec : std::uint32_t { Done = 0, Unchanged = 1, Refused = 3, Stop = 100 };
struct Observing : std::enable_shared_from_this<Observing> {
    virtual ~Observing() = default;
};
using Initiator = std::optional<std::reference_wrapper<Observing>>;
struct Observable;
struct Observer : Observing {
    virtual Exec changedNotify(Observable&, Initiator&) { return Exec::Unchanged; }
    virtual Exec toChangeNotify(Observable&, Initiator&) { return Exec::Unchanged; }
};
struct Action {
    virtual ~Action() = default;
    virtual Exec execute(Observable&, Observer&, Initiator) = 0;
};
struct Notify : Action {
    Exec execute(Observable& o, Observer& w, Initiator i) override {
        return i && &i->get() == &w ? Exec::Unchanged : w.changedNotify(o, i);
    }
};
struct PreNotify : Action {
    Exec execute(Observable& o, Observer& w, Initiator i) override {
        return i && &i->get() == &w ? Exec::Unchanged : w.toChangeNotify(o, i);
    }
};
Notify notifyAction;
PreNotify preNotifyAction;
struct Path {
    short priority;
    unsigned char flags;
    Action* action;
    Observer* target;
    Observing* owner;
};
using List = std::vector<std::unique_ptr<Path>>;

struct Info {
    virtual ~Info() = default;
    bool expire = true;
};
template <class T> struct NewValue : Info {
    T value;
    explicit NewValue(const T& v) : value(v) {}
};
struct Failed : Info {};

// per thread: few running changes at a time, so a flat vector stands for the map of maps
struct InfoEntry {
    const Observable* owner;
    std::type_index type;
    std::shared_ptr<Info> info;
};
thread_local std::vector<InfoEntry> t_infos;
thread_local unsigned t_flags = 0;

struct Observable : Observing {
    std::uint16_t flags = 1;
    List post, pre;
    std::atomic<std::uint64_t> depth{0};
    void addInfo(std::shared_ptr<Info> i) {
        flags |= 4;
        const std::type_index t(typeid(*i));
        for (auto& e : t_infos)
            if (e.owner == this && e.type == t) {
                e.info = std::move(i);
                return;
            }
        t_infos.push_back({this, t, std::move(i)});
    }
    Info* lookup(std::type_index t) const {
        for (auto& e : t_infos)
            if (e.owner == this && e.type == t) return e.info.get();
        return nullptr;
    }
    void removeInfos(bool all) {
        for (std::size_t i = t_infos.size(); i-- > 0;)
            if (t_infos[i].owner == this && (all || t_infos[i].info->expire))
                t_infos.erase(t_infos.begin() + long(i));
    }
    ~Observable() override { removeInfos(true); }
    void sequence(const std::shared_ptr<Observing>& init, List& list) {
        if (!(flags & 1)) return;
        depth.store(depth.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
        for (std::int64_t i = std::int64_t(list.size()) - 1; i >= 0; --i) {
            Path& p = *list[std::size_t(i)];
            if (!(p.flags & 1) || !p.target) break;
            if (!p.action) continue;
            const Exec r =
                p.action->execute(*this, *p.target, init ? Initiator(*init) : Initiator());
            if (r == Exec::Stop) break;
            i = std::min<std::int64_t>(i, std::int64_t(list.size()));
        }
        const auto d = depth.load(std::memory_order_relaxed) - 1;
        depth.store(d, std::memory_order_relaxed);
        if (d) return;
        if (&list == &post) {
            if (flags & 4) {
                removeInfos(false);
                flags &= std::uint16_t(~4);
            }
        } else if (flags & 8) flags &= std::uint16_t(~8);
    }
    virtual void touch(const std::shared_ptr<Observing>& i) { sequence(i, post); }
    virtual void preTouch(const std::shared_ptr<Observing>& i) { sequence(i, pre); }
};
struct AttrValBase {
    virtual ~AttrValBase() = default;
};
template <class T> struct AttrVal : AttrValBase { T value{}; };
template <class T> struct Attr : Observable {
    std::unique_ptr<AttrVal<T>> value = std::make_unique<AttrVal<T>>();
    const T& get() const {
        if (t_flags & 1) { /* cached attribute pending: look it up */
        }
        return value->value;
    }
    __attribute__((noinline)) void set(const T& v, const std::shared_ptr<Observing>& init = {}) {
        const unsigned f = t_flags;
        if (!(f & 2) && !pre.empty()) {
            addInfo(std::make_shared<NewValue<T>>(v));
            preTouch(init);
            if (lookup(typeid(Failed))) {
                removeInfos(false);
                return;
            }
        }
        value->value = v;
        if (f & 2) return;
        touch(init);
    }
};
struct Watcher : Observer {
    double sum = 0;
    Exec changedNotify(Observable& o, Initiator&) override {
        sum += static_cast<Attr<double>&>(o).get();
        return Exec::Done;
    }
};
struct Guard : Observer {
    Exec toChangeNotify(Observable& o, Initiator&) override {
        auto* n = static_cast<NewValue<double>*>(o.lookup(typeid(NewValue<double>)));
        if (n && n->value < 0) {
            o.addInfo(std::make_shared<Failed>());
            return Exec::Refused;
        }
        return Exec::Done;
    }
};
struct Model {
    std::shared_ptr<Attr<double>> attr = std::make_shared<Attr<double>>();
    std::vector<std::shared_ptr<Watcher>> w;
    std::shared_ptr<Guard> g;
    Model(int k, bool veto) {
        for (int i = 0; i < k; ++i) {
            w.push_back(std::make_shared<Watcher>());
            attr->post.push_back(
                std::make_unique<Path>(Path{1, 3, &notifyAction, w.back().get(), attr.get()}));
        }
        if (veto) {
            g = std::make_shared<Guard>();
            attr->pre.push_back(
                std::make_unique<Path>(Path{1, 3, &preNotifyAction, g.get(), attr.get()}));
        }
    }
    void set(double v) { attr->set(v); }
    double get() const { return attr->get(); }
    double sum() const {
        double t = 0;
        for (auto& x : w) t += x->sum;
        return t;
    }
};
BENCH_PEER("W1", "model", Model, [](Run& run) { notify::runAll<Model>(run); });
}  // namespace
