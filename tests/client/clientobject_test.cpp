// Object ids and client calls: ids from 1 and never again, one reference per id handed out, the last
// release frees the object; what a call reads from its list, and the test of a call's signature.
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "client/client_fixture.h"
#include "tavi/client/clientcall.h"
#include "tavi/client/clientobjectmgr.h"
#include "tavi/client/vararg.h"
#include "tavi/kxt/resource.h"
#include "tavi/kxt/utf.h"

namespace {

using namespace Tavi;
using ClientTest::b;
using ClientTest::list_of;
using ClientTest::l;
using ClientTest::o;
using ClientTest::s;

// A client object that counts its own end.
class Counted : public Kxt::RefCounted<IClientObject>
{
public:
    explicit Counted(int *deaths) : deaths_(deaths) {}
    ~Counted() override { ++*deaths_; }
    long client_object_id() const override { return id_; }
    void client_object_id(long id) override { id_ = id; }
    VarArg *invoke_client_call(ClientCall *, bool &error) override
    {
        error = false;
        return nullptr;
    }

private:
    int *deaths_;
    long id_ = -1;
};

TEST(ClientObjectMgr, IdsCountFromOneAndEachCarriesOneReference)
{
    int deaths = 0;
    ClientObjectMgr mgr;
    auto *first = new Counted(&deaths);
    auto *second = new Counted(&deaths);
    second->ref();  // the host's own hold, beside the ids

    mgr.external_ref(first);
    mgr.external_ref(second);
    EXPECT_EQ(1, first->client_object_id());
    EXPECT_EQ(2, second->client_object_id());
    EXPECT_EQ(first, mgr.get_client_object(1));
    EXPECT_EQ(nullptr, mgr.get_client_object(-1));
    EXPECT_EQ(nullptr, mgr.get_client_object(3));

    // Twice out, once back: the id stays, with one reference left.
    mgr.external_ref(first);
    EXPECT_EQ(1, first->client_object_id());
    EXPECT_EQ(2, first->ref_count());
    EXPECT_EQ(2, mgr.held_references(1));
    mgr.external_unref(first);
    EXPECT_EQ(1, first->client_object_id());
    EXPECT_EQ(first, mgr.get_client_object(1));
    EXPECT_EQ(0, deaths);

    // The last one takes the id, and the object goes with it.
    mgr.external_unref(first);
    EXPECT_EQ(1, deaths);
    EXPECT_EQ(nullptr, mgr.get_client_object(1));
    EXPECT_EQ(0, mgr.held_references(1));

    // An object held elsewhere outlives its id and comes back with a new one: ids are never reused.
    mgr.external_unref(second);
    EXPECT_EQ(-1, second->client_object_id());
    EXPECT_EQ(1, second->ref_count());
    mgr.external_ref(second);
    EXPECT_EQ(3, second->client_object_id());
    mgr.external_unref(second);
    EXPECT_EQ(1, deaths);

    // Giving back what has no id does nothing.
    mgr.external_unref(second);
    EXPECT_EQ(1, second->ref_count());
    second->unref();
    EXPECT_EQ(2, deaths);
    EXPECT_EQ(0u, mgr.held_count());
}

TEST(ClientObjectMgr, AManagerThatGoesLetsGoOfEveryIdStillHeld)
{
    int deaths = 0;
    auto *kept = new Counted(&deaths);
    kept->ref();
    {
        ClientObjectMgr mgr;
        mgr.external_ref(kept);
        mgr.external_ref(kept);
        mgr.external_ref(new Counted(&deaths));
        EXPECT_EQ(2u, mgr.held_count());
    }
    EXPECT_EQ(1, deaths);
    EXPECT_EQ(1, kept->ref_count());
    EXPECT_EQ(-1, kept->client_object_id());
    kept->unref();
}

TEST(ClientCall, ReadsTargetNameAndArguments)
{
    struct Row
    {
        std::vector<VarArg *> items;
        long object_id;
        char const *fname;
        long nargs;
        char const *arg0;
        char const *arg1;
    };
    Row const rows[] = {
        {{}, -1, "", 0, "none", "none"},
        {{o(5)}, 5, "", 0, "none", "none"},
        {{o(5), s(u"f")}, 5, "f", 0, "none", "none"},
        {{o(5), s(u"f"), l(1), s(u"x")}, 5, "f", 2, "l:1", "s:x"},
        {{l(5), s(u"f")}, -1, "f", 0, "none", "none"},
        {{o(5), new IdentArg(u"f"), b(true)}, 5, "", 1, "b:true", "none"},
    };
    for (Row const &row : rows) {
        ClientCall call(nullptr, list_of(row.items));
        std::string const name = ClientTest::describe(call.list());
        EXPECT_EQ(row.object_id, call.object_id()) << name;
        EXPECT_EQ(row.fname, Kxt::to_string(call.fname())) << name;
        EXPECT_EQ(row.nargs, call.nargs()) << name;
        EXPECT_EQ(row.arg0, ClientTest::describe(call.at(0))) << name;
        EXPECT_EQ(row.arg1, ClientTest::describe(call.at(1))) << name;
        EXPECT_EQ(nullptr, call.at(-1)) << name;
        EXPECT_EQ(nullptr, call.object()) << name;
    }
}

TEST(ClientCall, MatchSignature)
{
    struct Row
    {
        std::vector<VarArg *> items;
        long id;
        char16_t const *name;
        char const *signature;
        bool answer;
    };
    Row const rows[] = {
        {{o(1), s(u"f")}, 1, u"f", "", true},
        {{o(1), s(u"f")}, 1, u"f", "s", false},
        {{o(1), s(u"f"), l(2)}, 1, u"f", "", false},
        {{o(1), s(u"f"), l(2)}, 1, u"f", "l", true},
        {{o(1), s(u"f"), l(2)}, 1, u"f", ".", true},
        {{o(1), s(u"f"), l(2)}, 2, u"f", "l", false},
        {{o(1), s(u"f"), l(2)}, -1, u"f", "l", false},
        {{o(1), s(u"f"), l(2)}, 1, u"g", "l", false},
        {{o(1), s(u"f"), l(2)}, 1, u"ff", "l", false},
        {{o(1), s(u"ff"), l(2)}, 1, u"f", "l", false},
        {{o(1), s(u"f"), l(2), s(u"x")}, 1, u"f", "ls", true},
        {{o(1), s(u"f"), l(2), s(u"x")}, 1, u"f", "l.", true},
        {{o(1), s(u"f"), l(2), s(u"x")}, 1, u"f", "sl", false},
        {{o(1), s(u"f"), l(2), s(u"x")}, 1, u"f", "l", false},
        // A star or a plus never reaches the end of the signature.
        {{o(1), s(u"f"), l(2), l(3)}, 1, u"f", "*l", false},
        {{o(1), s(u"f"), l(2)}, 1, u"f", "+l", false},
        {{o(1), s(u"f"), list_of({l(2)})}, 1, u"f", "[l]", true},
        {{o(1)}, 1, u"f", "", false},
        {{o(1), new IdentArg(u"f")}, 1, u"f", "", false},
        {{l(1), s(u"f")}, 1, u"f", "", false},
    };
    for (Row const &row : rows) {
        ClientCall call(nullptr, list_of(row.items));
        EXPECT_EQ(row.answer, call.match_signature(row.id, row.name, row.signature))
            << ClientTest::describe(call.list()) << " for " << row.id << " \"" << row.signature << '"';
    }
}

}  // namespace
