#include "profile/profilerecord.h"

#include "profile/taggedvalues.h"

// The trailing strings hold the two information texts; a record may carry more, which are skipped.
constexpr qint32 kTrailingStringCount = 2;

void writeRecord(const Profile &profile, QByteArray &out)
{
    TagWriter w(out);
    w.writeInt(kRecordVersion);
    w.writeInt(profile.motorbikeType());
    w.writeInt(profile.templateType());
    w.writeBool(profile.isCustom());
    w.writeBool(profile.auxFlag());
    w.writeString(profile.name());
    w.writeString(profile.notes());
    w.writeInt(profile.flags().toByte(false));
    w.writeInt(profile.voltage());
    w.writeBool(profile.pickUpEdgeSelectable());
    // Older readers only know sensor mode 1 from this flag.
    w.writeBool(profile.sensorMode() == 1);
    w.writeDouble(profile.k1Rising());
    w.writeDouble(profile.k1Falling());
    const IgnitionMap &map = profile.map();
    for (int i = 0; i < kMapPointCount; ++i) {
        w.writeInt(map.rpms()[i]);
        w.writeInt(map.angles()[i]);
    }
    const SensorCoefficients &c = profile.sensorCoefficients();
    w.writeDouble(c.k0);
    w.writeDouble(c.k1);
    w.writeDouble(c.k2);
    w.writeInt(kTrailingStringCount);
    w.writeString(profile.extraText(0));
    w.writeString(profile.extraText(1));
}

tl::expected<Profile, FileError> readRecord(const QByteArray &record)
{
    TagReader r(record);
    Profile profile;

    qint32 version = 0;
    qint32 motorbikeType = 0;
    if (!r.readInt(version) || !r.readInt(motorbikeType))
        return damagedFile();
    qint32 templateType = motorbikeType;
    if (version > 0 && !r.readInt(templateType))
        return damagedFile();

    bool isCustom = true;
    bool auxFlag = false;
    QString name;
    QString notes;
    qint32 flagByte = 0;
    qint32 voltage = 0;
    bool edgeSelectable = true;
    bool sensorModeOne = false;
    double k1Rising = 0.0;
    double k1Falling = 0.0;
    if (!r.readBool(isCustom) || !r.readBool(auxFlag) || !r.readString(name) || !r.readString(notes)
        || !r.readInt(flagByte) || !r.readInt(voltage) || !r.readBool(edgeSelectable)
        || !r.readBool(sensorModeOne) || !r.readDouble(k1Rising) || !r.readDouble(k1Falling))
        return damagedFile();

    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i) {
        qint32 rpm = 0;
        qint32 angle = 0;
        if (!r.readInt(rpm) || !r.readInt(angle))
            return damagedFile();
        map.setPoint(i, rpm, angle);
    }

    SensorCoefficients coefficients;
    if (!r.readDouble(coefficients.k0) || !r.readDouble(coefficients.k1) || !r.readDouble(coefficients.k2))
        return damagedFile();

    qint32 stringCount = 0;
    if (!r.readInt(stringCount))
        return damagedFile();
    for (qint32 i = 0; i < stringCount; ++i) {
        QString text;
        if (!r.readString(text))
            return damagedFile();
        if (i < 2)
            profile.setExtraText(i, text);
    }

    ProfileFlags flags = ProfileFlags::fromByte(quint8(flagByte & 0xFF));
    if (sensorModeOne)
        flags.sensorMode = 1;

    profile.setMotorbikeType(motorbikeType, isCustom);
    profile.setTemplateType(templateType);
    profile.setAuxFlag(auxFlag);
    profile.setName(name);
    profile.setNotes(notes);
    profile.setVoltage(voltage);
    profile.setPickUpEdgeSelectable(edgeSelectable);
    profile.setK1(k1Rising, k1Falling);
    profile.setMap(map);
    // Flags first, then the coefficients: with a non-zero sensor mode the coefficients setter
    // derives K1 and K2 from the edge, as after every load.
    profile.setFlags(flags);
    profile.setSensorCoefficients(coefficients);
    profile.applySensorMode();
    profile.setModified(false);
    return profile;
}
