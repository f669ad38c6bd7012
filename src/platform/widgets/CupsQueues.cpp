#include "platform/widgets/CupsQueues.h"

#include "platform/widgets/CupsAttributes.h"

#include <QUrl>

namespace CupsQueues {
namespace {
constexpr int answerMs = 1000;
constexpr int takingMs = 10000;

/// A connection to the service for the calls of one thread.
class Connection {
public:
    explicit Connection(int patienceMs) {
        // Nobody is there to be asked for a password.
        cupsSetPasswordCB2([](const char*, http_t*, const char*, const char*, void*) -> const char* { return nullptr; },
                           nullptr);
        http.reset(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, answerMs, nullptr));
        if (http)
            httpSetTimeout(
                http.get(), patienceMs / 1000.0, [](http_t*, void*) { return 0; }, nullptr);
    }

    bool IsOpen() const { return http != nullptr; }
    /// The user's own before the service's; it need not be there.
    QString Default() const { return QString::fromUtf8(cupsGetDefault2(http.get())).section(u'/', 0, 0); }
    /// Null when there is no answer; `body` goes along.
    Cups::Response Ask(Cups::Request request, const char* resource, const QByteArray& body = {}) {
        const auto whole = std::size_t(body.size());
        const std::size_t length = ippLength(request.get()) + whole;
        if (cupsSendRequest(http.get(), request.get(), resource, length) != HTTP_STATUS_CONTINUE)
            return {};
        // What the service says while it is being told too much comes with its answer.
        if (whole > 0)
            cupsWriteRequestData(http.get(), body.constData(), whole);
        return Cups::Response(cupsGetResponse(http.get(), resource));
    }

private:
    struct Close {
        void operator()(http_t* open) const { httpClose(open); }
    };
    std::unique_ptr<http_t, Close> http;
};

bool succeeded(const Cups::Response& response) {
    return response && ippGetStatusCode(response.get()) < IPP_STATUS_REDIRECTION_OTHER_SITE;
}

QString lastProblem() {
    const QString told = QString::fromUtf8(cupsLastErrorString());
    return told.isEmpty() ? u"印刷サービスの応答がありません。"_s : told;
}

Cups::Request requestFor(ipp_op_t operation, const QString& queue = {}) {
    Cups::Request request(ippNewRequest(operation));
    if (queue.isEmpty())
        return request;
    const QByteArray name = queue.toUtf8();
    char address[HTTP_MAX_URI];
    httpAssembleURIf(HTTP_URI_CODING_ALL, address, sizeof address, "ipp", nullptr, "localhost", 0, "/printers/%s",
                     name.constData());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, address);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    return request;
}

void wants(const Cups::Request& request, std::initializer_list<const char*> attributes) {
    ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", int(attributes.size()),
                  nullptr, attributes.begin());
}
} // namespace

std::optional<Listing> List() {
    Connection service(answerMs);
    if (!service.IsOpen())
        return {};
    Cups::Request all = requestFor(CUPS_GET_PRINTERS);
    wants(all, {"printer-name"});
    const Cups::Response queues = service.Ask(std::move(all), "/");
    if (!queues)
        return {};
    Listing listing;
    for (ipp_attribute_t* name = ippFindAttribute(queues.get(), "printer-name", IPP_TAG_NAME); name;
         name = ippFindNextAttribute(queues.get(), "printer-name", IPP_TAG_NAME))
        listing.Names.append(QString::fromUtf8(ippGetString(name, 0, nullptr)));
    listing.Default = service.Default();
    if (!listing.Names.contains(listing.Default))
        listing.Default.clear();
    return listing;
}

std::optional<Queue> Ask(const QString& name) {
    Connection service(answerMs);
    if (!service.IsOpen())
        return {};
    Cups::Request request = requestFor(IPP_OP_GET_PRINTER_ATTRIBUTES, name);
    wants(request, {"all", "media-col-database"});
    const Cups::Response told = service.Ask(std::move(request), "/");
    if (!succeeded(told))
        return {};
    return Queue{Cups::DescriptionOf(told, name), Cups::OptionsOf(told)};
}

std::optional<QString> Submit(const Job& job, const QByteArray& page) {
    Connection service(takingMs);
    if (!service.IsOpen())
        return lastProblem();
    Cups::Request request = requestFor(IPP_OP_PRINT_JOB, job.Queue);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr,
                 Cups::NameOf(job.Title).constData());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr, "application/pdf");
    Cups::AddJobOptions(request, job.Paper, job.Chosen);
    const QByteArray resource = "/printers/" + QUrl::toPercentEncoding(job.Queue);
    const Cups::Response taken = service.Ask(std::move(request), resource.constData(), page);
    return succeeded(taken) ? std::nullopt : std::optional(lastProblem());
}
} // namespace CupsQueues
