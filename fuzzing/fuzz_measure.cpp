// SPDX-FileCopyrightText: Aerolith developers
// Any bytes as a section that is measured, and compared with itself and with a plain section.
#include "cli/run.h"
#include "fuzzing/fuzzing.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <string>
#include <vector>

namespace {

const QByteArray plain =
    "plain\n1 0\n0.5 0.08\n0.2 0.09\n0.05 0.05\n0 0\n0.1 -0.03\n0.5 -0.03\n1 0\n";

struct Printed {
    int code = 0;
    QByteArray out;
    QByteArray err;
};

Printed printed(const std::vector<std::string>& arguments) {
    Printed result;
    const auto into = [](QByteArray& bytes) {
        return [&bytes](std::string_view text) {
            bytes.append(text.data(), qsizetype(text.size()));
            return 0;
        };
    };
    cli::Streams streams;
    streams.in = -1;
    streams.out = into(result.out);
    streams.err = into(result.err);
    result.code = int(cli::run(arguments, streams));
    return result;
}

// A number that is not finite is written as null.
void require_numbers(const QJsonValue& value) {
    REQUIRE(!value.isNull() && !value.isUndefined());
    if (value.isArray()) {
        for (const QJsonValue& item : value.toArray())
            require_numbers(item);
    }
    if (value.isObject()) {
        for (const QJsonValue& item : value.toObject())
            require_numbers(item);
    }
}

// The object of the only file, which has numbers or a reason for having none.
QJsonObject require_results(const Printed& run, const char* number) {
    REQUIRE(run.code == 0 || run.code == 1);
    const QJsonDocument document = QJsonDocument::fromJson(run.out);
    REQUIRE(document.array().size() == 1);
    const QJsonObject object = document.array()[0].toObject();
    require_numbers(object);
    if (!object.contains(QLatin1String(number)))
        REQUIRE(run.code == 1 && !run.err.isEmpty());
    return object;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const MemoryFile file(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    const MemoryFile other(plain);
    const std::string name = file.name().toStdString();
    const std::string reference = other.name().toStdString();

    const QJsonObject m =
        require_results(printed({"measure", "--json", "--at", "0,9.5,50,100", name}), "length");
    if (!m.contains(QLatin1String("length")))
        return 0;
    const double sides =
        m[QLatin1String("upper_length")].toDouble() + m[QLatin1String("lower_length")].toDouble();
    const double length = m[QLatin1String("length")].toDouble();
    REQUIRE(length > 0.0 && qAbs(sides - length) <= 1e-9 * length);
    const Printed text = printed({"measure", "--chord", "2850", name});
    REQUIRE(!text.out.contains(" nan") && !text.out.contains(" inf"));

    const QJsonObject same =
        require_results(printed({"compare", "--json", name, name}), "greatest");
    REQUIRE(same[QLatin1String("greatest")].toDouble() <= 1e-6 * std::max(1.0, length));
    const QJsonObject c = require_results(
        printed({"compare", "--json", "--align", "--tolerance", "0.01", reference, name}),
        "greatest");
    REQUIRE(c[QLatin1String("greatest")].toDouble() >= 0.0);
    return 0;
}
