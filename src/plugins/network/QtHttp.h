#pragma once

#include "desktop/Http.h"

// Asks by Qt Network. Every question has its own cookies, connections and cached passwords: none.
class QtHttp : public HttpClient
{
public:
    std::unique_ptr<QObject> ask(const HttpQuestion& question, Done done) override;
};
