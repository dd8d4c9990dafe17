#include "plugin/HostNews.h"

#include "plugin/IPlugBase.h"

namespace Grimworks {

HostNews::HostNews(IPlugBase& plugBase) : plug(plugBase) {
    plug.lock.Enter();
    isOutermost = plug.news == nullptr;
    if (isOutermost) plug.news = this;
}

HostNews::~HostNews() {
    if (isOutermost) plug.news = nullptr;
    plug.lock.Leave();
    try {
        Tell();
    } catch (...) {
        return; // nothing may unwind out of here
    }
}

void HostNews::Tell() {
    for (std::size_t i = 0; i < fewCount; ++i)
        plug.InformHostOfParamChange(few[i].id, few[i].normalized);
    for (const Item& item : more)
        plug.InformHostOfParamChange(item.id, item.normalized);
    if (programs) plug.InformHostOfProgramChange();
}

void HostNews::Add(int id, double normalized) {
    if (fewCount < few.size()) {
        few[fewCount++] = {id, normalized};
    } else {
        more.push_back({id, normalized});
    }
}

} // namespace Grimworks
