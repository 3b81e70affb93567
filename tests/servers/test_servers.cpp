// The sharing rules of the test servers, with stand-in servers that start nothing: one start per
// kind, a failed start reported again, opting out by name, stopping newest first. The real
// servers are exercised by the suites that use them.
#include "ZvTestServers.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace zv::test {
namespace {

std::vector<std::string>& Events() {
    static std::vector<std::string> List;
    return List;
}

// A server that records its start and stop; Name picks the stand-in kind.
template <int Kind>
class TStandIn : public TZvTestServer {
public:
    static constexpr const char* kName = Kind == 0 ? "standin-a" : Kind == 1 ? "standin-b" : "standin-broken";

    TStandIn() : TZvTestServer(kName) {
        Events().push_back(std::string("start ") + kName);
        if (Kind == 2) {
            throw std::runtime_error("no engine here");
        }
    }
    ~TStandIn() override { Events().push_back(std::string("stop ") + kName); }

    std::string GetName() const override { return kName; }
    QSqlDatabase Connect(const QString&) const override { return {}; }
};

using TStandInA = TStandIn<0>;
using TStandInB = TStandIn<1>;
using TBroken = TStandIn<2>;

class ZvTestServers : public ::testing::Test {
protected:
    void SetUp() override {
        StopSharedServers();
        Events().clear();
        unsetenv("ZEVRIN_SKIP_SERVERS");
    }
    void TearDown() override {
        StopSharedServers();
        unsetenv("ZEVRIN_SKIP_SERVERS");
    }
};

TEST_F(ZvTestServers, StartsEachKindOnceAndHandsOutTheSameServer) {
    TStandInA& First = SharedServer<TStandInA>();
    TStandInA& Second = SharedServer<TStandInA>();
    EXPECT_EQ(&First, &Second);
    EXPECT_TRUE(std::filesystem::is_directory(First.GetDirectory()));
    EXPECT_EQ(Events(), (std::vector<std::string>{"start standin-a"}));
}

TEST_F(ZvTestServers, StopsNewestFirstAndRemovesTheDirectories) {
    const std::filesystem::path DirA = SharedServer<TStandInA>().GetDirectory();
    const std::filesystem::path DirB = SharedServer<TStandInB>().GetDirectory();
    StopSharedServers();
    EXPECT_EQ(Events(), (std::vector<std::string>{"start standin-a", "start standin-b", "stop standin-b",
                                                  "stop standin-a"}));
    EXPECT_FALSE(std::filesystem::exists(DirA));
    EXPECT_FALSE(std::filesystem::exists(DirB));
}

TEST_F(ZvTestServers, AFailedStartIsReportedAgainWithoutASecondTry) {
    std::string FirstMessage, SecondMessage;
    try {
        SharedServer<TBroken>();
    } catch (const std::runtime_error& Error) {
        FirstMessage = Error.what();
    }
    try {
        SharedServer<TBroken>();
    } catch (const std::runtime_error& Error) {
        SecondMessage = Error.what();
    }
    EXPECT_EQ(FirstMessage, "the standin-broken test server did not start: no engine here");
    EXPECT_EQ(SecondMessage, FirstMessage);
    EXPECT_EQ(Events(), (std::vector<std::string>{"start standin-broken"}));
}

TEST_F(ZvTestServers, OptingOutByNameRaisesTheOptOutWithoutStarting) {
    setenv("ZEVRIN_SKIP_SERVERS", "standin-b,standin-a", 1);
    EXPECT_THROW(SharedServer<TStandInA>(), TZvServerOptedOut);
    EXPECT_TRUE(Events().empty());
}

TEST_F(ZvTestServers, OptOutListMatchesWholeNamesOrAll) {
    setenv("ZEVRIN_SKIP_SERVERS", "mariadb,firebird", 1);
    EXPECT_TRUE(IsServerOptedOut("mariadb"));
    EXPECT_TRUE(IsServerOptedOut("firebird"));
    EXPECT_FALSE(IsServerOptedOut("maria"));
    EXPECT_FALSE(IsServerOptedOut("postgresql"));
    setenv("ZEVRIN_SKIP_SERVERS", "all", 1);
    EXPECT_TRUE(IsServerOptedOut("sqlite"));
    unsetenv("ZEVRIN_SKIP_SERVERS");
    EXPECT_FALSE(IsServerOptedOut("sqlite"));
}

TEST_F(ZvTestServers, AnOptedOutServerIsNotAFailureOfTheOthers) {
    setenv("ZEVRIN_SKIP_SERVERS", "standin-b", 1);
    EXPECT_THROW(SharedServer<TStandInB>(), TZvServerOptedOut);
    EXPECT_NO_THROW(SharedServer<TStandInA>());
}

} // namespace
} // namespace zv::test
