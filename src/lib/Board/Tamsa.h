#ifndef BOARD_TAMSA_H
#define BOARD_TAMSA_H

#include <Board/Export.h>
#include <foundation/QStuff.h>

#include <string>

namespace Board
{

class KSBaseHandler;

/// One connected board: its name and the bits that were last commanded on it.
///
/// Made and destroyed by the engine's refresh alone; the engine owns it. GUI thread.
class BOARD_EXPORT Tamsa : public Orvex::QStuff
{
    Q_OBJECT

public:
    /// Makes a board and enters it into the engine's map.
    ///
    /// @throws Orvex::FactoryFailed for an empty name, a null engine or a name that is already
    /// known, with nothing made.
    static Tamsa* create(const std::string& boardName, KSBaseHandler* engine);
    static void preCreate(const std::string& boardName, const KSBaseHandler* engine);
    void postCreate(const std::string& boardName, KSBaseHandler* engine);
    /// Leaves the engine's map and deletes the board.
    void destroy();

    /// The name as the tool lists it, as the tool's bytes.
    const std::string& getName() const { return name; }

    /// The reset state that was last commanded with success; the tool is never asked for it.
    bool getResetBit() const { return resetBit; }
    /// The clock state that was last commanded with success; the tool is never asked for it.
    bool getClockBit() const { return clockBit; }
    /// Remembers the state; sends nothing.
    void setResetBit(bool isSet);
    /// Remembers the state; sends nothing.
    void setClockBit(bool isSet);

    /// Drives the board to the known state of a new board and remembers that state, whatever the
    /// tool replied.
    void initialize();

    std::string _getLabel() const override;
    Orvex::Slot* _getSlot() const override;
    Orvex::Record* _getRecord() const override;
    bool _hasRecord() const override;
    void preDestroy() override;
    std::string getAlias() const override;

private:
    Tamsa(const std::string& boardName, KSBaseHandler* engine);
    ~Tamsa() override;

    KSBaseHandler* const ksBaseHandler; ///< owns this board; not owned
    const std::string name;
    bool resetBit;
    bool clockBit;
};

} // namespace Board

#endif
