// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/chart/CChartDisplay.h"

#include "platform/chart/CDataArrayD.h"
#include "platform/chart/ChartPicture.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace OndoChartDisplay {

namespace {

/// Mostly spares a look at the letters of two names.
struct ByLength
{
    using is_transparent = void;
    bool operator()(std::string_view one, std::string_view other) const
    {
        return one.size() != other.size() ? one.size() < other.size() : one < other;
    }
};

template<class... Classes>
std::shared_ptr<CBaseObject> createOneOf(const std::string& className)
{
    std::shared_ptr<CBaseObject> object;
    // The first class of the name ends the search.
    static_cast<void>(
        ((className == Classes::CLASS && (object = std::make_shared<Classes>(), true)) || ...));
    return object;
}

std::shared_ptr<CBaseObject> createObject(const std::string& className)
{
    return createOneOf<CLayerDescription, CLayoutCell, CStyleResource, CRectangle, CDiagramArea,
                       CCoordinateSystemCartesian, CScale, CGridCartesian, CDataArrayD,
                       CFontResource, CAxisLabel, CCurveCartesian>(className);
}

} // namespace

CPtr::CPtr(std::weak_ptr<CBaseObject> object)
    : m_object(std::move(object))
    , m_count(m_object.expired() ? 0 : 1)
{}

void CPtr::AddRef()
{
    if (m_count > 0)
        ++m_count;
}

void CPtr::FreeRef()
{
    if (m_count > 0)
        --m_count;
}

CBaseObject* CPtr::CheckAndGetBaseObject() const
{
    return m_count > 0 ? m_object.lock().get() : nullptr;
}

CFactory::~CFactory() = default;
IObjectManagement::~IObjectManagement() = default;

struct CChartDisplay::Private : CFactory, IObjectManagement
{
    CPtr InternalCreateObject(const char* className, const char* name) override
    {
        if (!className || !name || !*name || objects.count(name))
            return {};
        std::shared_ptr<CBaseObject> object = createObject(className);
        if (!object)
            return {};
        objects.emplace(name, object);
        return CPtr(object);
    }
    void AddObject(const char* name, const char*, int) override
    {
        const CBaseObject* object = Find(name);
        if (object && std::find(drawn.begin(), drawn.end(), object) == drawn.end())
            drawn.push_back(object);
    }
    CBaseObject* Find(const char* name) const
    {
        const auto found = name ? objects.find(std::string_view(name)) : objects.end();
        return found == objects.end() ? nullptr : found->second.get();
    }

    std::map<std::string, std::shared_ptr<CBaseObject>, ByLength> objects;
    std::vector<const CBaseObject*> drawn;
    std::shared_ptr<ChartPicture> picture = std::make_shared<ChartPicture>();
};

CChartDisplay::CChartDisplay()
    : d(std::make_unique<Private>())
{}

CChartDisplay::~CChartDisplay() = default;

CFactory& CChartDisplay::Factory() { return *d; }

IObjectManagement& CChartDisplay::ObjectManager() { return *d; }

CBaseObject* CChartDisplay::FindBaseObject(const char* name) const { return d->Find(name); }

void CChartDisplay::Update()
{
    d->picture->Take([this](const std::string& name) { return d->Find(name.c_str()); }, d->drawn);
}

std::weak_ptr<const ChartPicture> CChartDisplay::Picture() const { return d->picture; }

} // namespace OndoChartDisplay
