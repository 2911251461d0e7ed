/// A drawing in memory, with its entities by handle and by the number in their ids.
#include "drawing.h"

#include "object_access.h"
#include "object_id.h"

#include <atomic>
#include <cstdio>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>

namespace standin {
namespace {

std::atomic<std::uint64_t> gDrawings{0};

std::uint64_t nextSerial() {
  // Serial numbers are 1 ... kLargestSerial, then 1 again: an id must fit a signed 64-bit number.
  return gDrawings++ % host::kLargestSerial + 1;
}

struct Block {
  AcGePoint3d base;
  std::vector<std::unique_ptr<DrawnEntity>> entities;
};

std::string hex(std::uint64_t handle) {
  char text[20];
  std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(handle));
  return text;
}

}  // namespace

struct Drawing::Data {
  const std::uint64_t serial = nextSerial();
  std::map<std::string, Layer> layers;
  std::map<std::string, Block> blocks;
  std::vector<std::unique_ptr<DrawnEntity>> entities;
  std::unordered_map<std::uint64_t, DrawnEntity*> byHandle;
  // Erased entities stay in `entities`: ids and pointers that a module keeps must stay good.
  std::unordered_set<std::uint64_t> erased;
  std::uint64_t nextHandle = 1;
};

DrawnEntity::DrawnEntity(EntityProperties properties) : mProperties(std::move(properties)) {}
DrawnEntity::~DrawnEntity() = default;

std::vector<DrawnPart> DrawnEntity::parts() const {
  return {{mProperties.layer, mProperties.colour, mProperties.layer, outline()}};
}

Drawing::Drawing() : mDataP(std::make_unique<Data>()) {
  // Every drawing has it, and layer() falls back on it.
  addLayer({"0"});
}
Drawing::~Drawing() = default;

void Drawing::addLayer(const Layer& layer) {
  mDataP->layers[layer.name] = layer;
}

const Layer& Drawing::layer(const std::string& name) const {
  const auto found = mDataP->layers.find(name);
  return found == mDataP->layers.end() ? mDataP->layers.at("0") : found->second;
}

const std::map<std::string, Layer>& Drawing::layers() const {
  return mDataP->layers;
}

void Drawing::addBlock(const std::string& name, const AcGePoint3d& basePoint) {
  Block& block = mDataP->blocks[name];
  block.base = basePoint;
  // A block that is defined twice: the later definition counts.
  block.entities.clear();
}

void Drawing::addToBlock(const std::string& name, std::unique_ptr<DrawnEntity> entity) {
  mDataP->blocks[name].entities.push_back(std::move(entity));
}

bool Drawing::hasBlock(const std::string& name) const {
  return mDataP->blocks.count(name) != 0;
}

const std::vector<std::unique_ptr<DrawnEntity>>& Drawing::blockEntities(const std::string& name) const {
  static const std::vector<std::unique_ptr<DrawnEntity>> kNone;
  const auto found = mDataP->blocks.find(name);
  return found == mDataP->blocks.end() ? kNone : found->second.entities;
}

AcGePoint3d Drawing::blockBase(const std::string& name) const {
  const auto found = mDataP->blocks.find(name);
  return found == mDataP->blocks.end() ? AcGePoint3d::kOrigin : found->second.base;
}

std::uint64_t Drawing::add(std::unique_ptr<DrawnEntity> entity) {
  std::uint64_t& handle = entity->mProperties.handle;
  if (handle == 0) handle = mDataP->nextHandle;
  if (!mDataP->byHandle.emplace(handle, entity.get()).second)
    throw std::invalid_argument("handle " + hex(handle) + " is taken");
  // The largest handle has no next one; those below it may still be free.
  if (handle >= mDataP->nextHandle && handle != ~std::uint64_t{0}) mDataP->nextHandle = handle + 1;
  // The number in the id is the place in `entities` + 1, because an id of 0 is null.
  host::ObjectAccess::setKey(entity->entity(), host::objectId(serial(), mDataP->entities.size() + 1));
  const std::uint64_t given = handle;
  mDataP->entities.push_back(std::move(entity));
  return given;
}

const std::vector<std::unique_ptr<DrawnEntity>>& Drawing::entities() const {
  return mDataP->entities;
}

DrawnEntity* Drawing::find(std::uint64_t handle) const {
  const auto found = mDataP->byHandle.find(handle);
  return found == mDataP->byHandle.end() ? nullptr : found->second;
}

std::uint64_t Drawing::serial() const {
  return mDataP->serial;
}

DrawnEntity* Drawing::findByNumber(std::uint64_t number) const {
  const auto& entities = mDataP->entities;
  return number == 0 || number > entities.size() ? nullptr : entities[number - 1].get();
}

void Drawing::erase(std::uint64_t handle) {
  if (find(handle) != nullptr) mDataP->erased.insert(handle);
}

bool Drawing::isErased(std::uint64_t handle) const {
  return mDataP->erased.count(handle) != 0;
}

std::optional<AcDbExtents> Drawing::extents() const {
  std::optional<AcDbExtents> result;
  for (const auto& entityP : mDataP->entities) {
    AcDbExtents box;
    // What is not drawn does not count, as for ZOOM Extents.
    if (isErased(entityP->properties().handle) || !layer(entityP->properties().layer).isVisible) continue;
    if (host::ObjectAccess::extents(entityP->entity(), box) != Acad::eOk) continue;
    if (!result) result.emplace();
    result->addPoint(box.minPoint());
    result->addPoint(box.maxPoint());
  }
  return result;
}

}  // namespace standin
