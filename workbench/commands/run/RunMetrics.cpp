#include "RunMetrics.h"

#ifdef WORKBENCH_HAS_METRICS

#include "HttpServer.h"
#include "MetricsService.h"
#include "OutletStatus.h"
#include "PlantMetrics.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr char Scrapes[] = "scrapes";

class MetricsOutlet : public Outlet {
public:
    MetricsOutlet(MetricsOptions const& options, OutletParts const& runParts)
        : parts(runParts),
          status("metrics", parts.log),
          counter(parts.blocks),
          metrics({parts.project, parts.version, dorvel::Environment().Now(), parts.blocks, parts.tasks}),
          server(ReadHttpAddress(options.address), "--metrics"),
          service(server.Address(), [this] { return Scrape(); }) {
        status.Count(Scrapes, 0);
    }
    // A run that ends with an exception does not call End, and the service must outlive the server's threads.
    ~MetricsOutlet() override { server.Stop(); }

    void Start() override {
        server.Start(service);
        status.Set(OutletHealth::Good, "http://" + HostText(server.Address()) + "/metrics");
        if (!IsLoopback(server.Address().address)) {
            parts.log.Add("metrics: everybody who reaches " + HostText(server.Address()) +
                          " can read the values, and who can listen to the network too; docs/publish.md "
                          "shows what to do");
        }
    }

    void Follow(SharedSnapshot const& block) override { counter.Follow(block); }
    void End() override { server.Stop(); }
    OutletState State() const override { return status.State(); }

private:
    std::string Scrape() {
        status.Count(Scrapes);
        return metrics.Text({parts.memory.board.All(), counter.Counts(), parts.traffic(),
                             parts.outlets ? parts.outlets() : std::vector{status.State()}});
    }

    OutletParts parts;
    OutletStatus status;
    CycleCounter counter;
    PlantMetrics metrics;
    HttpServer server;
    MetricsService service;
};

}  // namespace

std::unique_ptr<Outlet> MakeMetrics(MetricsOptions const& options, OutletParts const& parts) {
    return options.isOn ? std::make_unique<MetricsOutlet>(options, parts) : nullptr;
}

}  // namespace workbench

#else

namespace workbench {

std::unique_ptr<Outlet> MakeMetrics(MetricsOptions const&, OutletParts const&) {
    return nullptr;
}

}  // namespace workbench

#endif
