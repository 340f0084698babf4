#pragma once

/// Types of colour tables. The numbers are stored in files and preferences: never renumber.
/// The names shown to the user, their order in lists and their colours are those of OrmColorTables.h.
enum ORM_COLORTABLE_TYPES : int
{
    ORM_CT_GRAYS = 0,
    ORM_CT_RAINBOW = 1,
    ORM_CT_SURFACE = 2, ///< neutral light ramp for maps on surfaces; not offered for volumes
    ORM_CT_RED = 8,
    ORM_CT_GREEN = 9,
    ORM_CT_BLUE = 10,
    ORM_CT_CYAN = 11,
    ORM_CT_YELLOW = 12,
    ORM_CT_MAGENTA = 13,
    ORM_CT_ORANGE = 14,
    ORM_CT_BLUEYELLOW = 23,
    ORM_CT_GREENPINK = 24,
    ORM_CT_EOSB = 25,
    ORM_CT_JET = 26
};
