#include <Board/Tamsa.h>

#include <Board/IntrospectionRecord.h>
#include <Board/KSBaseHandler.h>
#include <foundation/FactoryFailed.h>
#include <foundation/Raise.h>
#include <foundation/StandardSlot.h>

namespace Board
{

namespace
{

const char sourceFile[] = "src/lib/Board/Tamsa";

void refuse(const char* message, unsigned long line)
{
    Orvex::raise(Orvex::FactoryFailed(message), "preCreate", sourceFile, line);
}

} // namespace

Tamsa* Tamsa::create(const std::string& boardName, KSBaseHandler* engine)
{
    preCreate(boardName, engine);
    auto* const tamsa = new Tamsa(boardName, engine);
    tamsa->postCreate(boardName, engine);
    return tamsa;
}

void Tamsa::preCreate(const std::string& boardName, const KSBaseHandler* engine)
{
    if (boardName.empty()) {
        refuse("Empty name", __LINE__);
    }
    if (engine == nullptr) {
        refuse("Null ksBaseHandler", __LINE__);
    }
    if (engine->getTamsa(boardName) != nullptr) {
        refuse("Already exists", __LINE__);
    }
}

Tamsa::Tamsa(const std::string& boardName, KSBaseHandler* engine)
    : ksBaseHandler(engine)
    , name(boardName)
    , resetBit(false)
    , clockBit(false)
{
}

Tamsa::~Tamsa() = default;

void Tamsa::postCreate(const std::string& /*boardName*/, KSBaseHandler* engine)
{
    engine->attach(this);
}

void Tamsa::destroy()
{
    preDestroy();
    delete this;
}

void Tamsa::preDestroy()
{
    ksBaseHandler->detach(this);
}

void Tamsa::setResetBit(bool isSet)
{
    resetBit = isSet;
}

void Tamsa::setClockBit(bool isSet)
{
    clockBit = isSet;
}

void Tamsa::initialize()
{
    ksBaseHandler->initialize(name);
    // On this object and not through the engine: the previous selection is back by now.
    setResetBit(false);
    setClockBit(true);
}

std::string Tamsa::getAlias() const
{
    return "Tamsa[" + name + "]";
}

std::string Tamsa::_getLabel() const
{
    return getAlias();
}

bool Tamsa::_hasRecord() const
{
    return true;
}

Orvex::Slot* Tamsa::_getSlot() const
{
    return new Orvex::StandardSlot<Tamsa*>(this);
}

Orvex::Record* Tamsa::_getRecord() const
{
    return makeRecord(*this, "Tamsa");
}

} // namespace Board
